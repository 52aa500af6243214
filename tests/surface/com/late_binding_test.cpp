// Calls by name, with arguments as the engines of scripts and other languages hand them over.
#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <vector>

#include "platform/windows/wide.h"
#include "surface/com/dll.h"

namespace tandril::test {
namespace {

using Microsoft::WRL::ComPtr;

constexpr WORD asMethod = DISPATCH_METHOD;
constexpr DISPID getDetailsId = 9;
constexpr DISPID deleteNodeId = 16;
constexpr DISPID getVariableId = 20;
constexpr DISPID setCurrentmdbId = 19;
constexpr DISPID localXmlExistsId = 23;
constexpr DISPID setModeId = 26;
constexpr DISPID columnHeadingsId = 46;
constexpr DISPID completeOrderId = 57;

// A VARIANT of a test, cleared when destroyed.
class Argument {
  public:
    Argument() { ::VariantInit(&raw_); }
    Argument(const char* text) : Argument() {
        const std::wstring wide = platform::toWide(text);
        raw_.vt = VT_BSTR;
        raw_.bstrVal = ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    }
    Argument(int number) : Argument() {
        raw_.vt = VT_I4;
        raw_.lVal = number;
    }
    Argument(double number) : Argument() {
        raw_.vt = VT_R8;
        raw_.dblVal = number;
    }
    Argument(bool flag) : Argument() {
        raw_.vt = VT_BOOL;
        raw_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Argument(const Argument& other) : Argument() {
        ::VariantCopy(&raw_, const_cast<VARIANT*>(&other.raw_));
    }
    Argument& operator=(const Argument&) = delete;
    ~Argument() { ::VariantClear(&raw_); }

    static Argument null() { return ofType(VT_NULL); }
    static Argument leftOut() {
        Argument argument = ofType(VT_ERROR);
        argument.raw_.scode = DISP_E_PARAMNOTFOUND;
        return argument;
    }
    static Argument object() { return ofType(VT_UNKNOWN); }
    // A variable of a script.
    static Argument variable(Argument& value) {
        Argument argument = ofType(VT_BYREF | VT_VARIANT);
        argument.raw_.pvarVal = value.get();
        return argument;
    }
    // A variable of a language whose variables have types.
    static Argument typedVariable(Argument& value) {
        Argument argument = ofType(static_cast<VARTYPE>(VT_BYREF | value.raw_.vt));
        argument.raw_.byref = &value.raw_.bstrVal;
        return argument;
    }

    VARIANT* get() { return &raw_; }
    VARTYPE type() const { return raw_.vt; }
    // In words, for comparisons: "8:text", "2:7".
    std::string shown() const {
        std::string words = std::to_string(raw_.vt) + ':';
        if (raw_.vt == VT_BSTR) {
            words += platform::toUtf8({raw_.bstrVal, ::SysStringLen(raw_.bstrVal)});
        } else if (raw_.vt == VT_I2) {
            words += std::to_string(raw_.iVal);
        } else if (raw_.vt == VT_I4) {
            words += std::to_string(raw_.lVal);
        } else if (raw_.vt == VT_BOOL) {
            words += raw_.boolVal == VARIANT_FALSE ? "false" : "true";
        }
        return words;
    }

  private:
    static Argument ofType(VARTYPE type) {
        Argument argument;
        argument.raw_.vt = type;
        return argument;
    }

    VARIANT raw_;
};

// The words of an exception, which are its reader's to free.
std::string taken(BSTR text) {
    const std::string words = platform::toUtf8({text, ::SysStringLen(text)});
    ::SysFreeString(text);
    return words;
}

class LateBinding : public testing::Test {
  protected:
    void SetUp() override {
        if (!isMachineOfTests()) GTEST_SKIP() << "drive C: is somebody's";
        clearMachine();
        std::filesystem::create_directories(L"C:\\Vorn Tandril\\MasterData");
        std::ofstream(L"C:\\Vorn Tandril\\MasterData\\Parts.mdb");
        std::filesystem::copy_file(TANDRIL_SAMPLES "/fieldmapper-en.xml",
                                   "C:\\Vorn Tandril\\FieldMapper.xml");
        std::filesystem::copy_file(TANDRIL_SAMPLES "/orders.xml", "C:\\Vorn Tandril\\Harbrook.xml");
        ASSERT_EQ(call(1, {}), S_OK);
    }
    ~LateBinding() override {
        if (isMachineOfTests()) clearMachine();
    }

    // Calls with arguments in the order of the parameters; what it comes to stays in the members.
    HRESULT call(DISPID id, std::vector<Argument> arguments, WORD kind = asMethod) {
        std::vector<VARIANT> reversed;
        for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
            reversed.push_back(*argument->get());
        }
        DISPPARAMS given{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        return invoke(id, given, kind);
    }
    HRESULT invoke(DISPID id, DISPPARAMS& given, WORD kind = asMethod) {
        ::VariantClear(result_.get());
        exception_ = {};
        wrongArgument_ = noArgument;
        return client_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &given, result_.get(),
                               &exception_, &wrongArgument_);
    }
    std::string mode() {
        EXPECT_EQ(call(getVariableId, {"Mode"}), S_OK);
        return result_.shown();
    }
    // The mode that a call sets, or the error that it ends in.
    std::string modeSetBy(const Argument& argument) {
        const HRESULT returned = call(setModeId, {argument});
        return returned == S_OK ? mode() : "error";
    }
    HRESULT idOf(std::wstring name, DISPID& id) {
        LPOLESTR text = name.data();
        return client_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    }
    // Whether the store has that order.
    bool hasOrder(const std::string& number) {
        EXPECT_EQ(call(17, {}), S_OK);
        return result_.shown().find('"' + number + '"') != std::string::npos;
    }

    static constexpr UINT noArgument = 99;

    Apartment apartment_;
    Dll dll_;
    ComPtr<::_Client20> client_ = dll_.client();
    Argument result_;
    EXCEPINFO exception_{};
    UINT wrongArgument_ = noArgument;
};

TEST_F(LateBinding, NamesAreFoundInAnyCase) {
    for (const wchar_t* name : {L"StroreErrorOrders", L"stroreerrororders", L"STROREERRORORDERS"}) {
        DISPID id = 0;
        EXPECT_EQ(idOf(name, id), S_OK);
        EXPECT_EQ(id, 39);
    }
    DISPID id = 0;
    EXPECT_EQ(idOf(L"StoreErrorOrders", id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(id, DISPID_UNKNOWN);
}

TEST_F(LateBinding, ParametersAreFoundByTheirNames) {
    std::wstring method = L"GetDetails", kind = L"iObject", error = L"iError";
    std::array<LPOLESTR, 3> names{method.data(), error.data(), kind.data()};
    std::array<DISPID, 3> ids{};
    ASSERT_EQ(client_->GetIDsOfNames(IID_NULL, names.data(), 3, LOCALE_USER_DEFAULT, ids.data()),
              S_OK);
    EXPECT_THAT(ids, testing::ElementsAre(getDetailsId, 5, 0));
}

TEST_F(LateBinding, NoOtherInterfaceIsCalled) {
    DISPPARAMS none{};
    EXPECT_EQ(client_->Invoke(localXmlExistsId, IID__Client20, LOCALE_USER_DEFAULT, asMethod, &none,
                              nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
    std::wstring name = L"Initialize";
    LPOLESTR text = name.data();
    DISPID id = 0;
    EXPECT_EQ(client_->GetIDsOfNames(IID__Client20, &text, 1, LOCALE_USER_DEFAULT, &id),
              DISP_E_UNKNOWNINTERFACE);
}

TEST_F(LateBinding, EachKindOfResultArrivesAsItself) {
    EXPECT_EQ(call(localXmlExistsId, {}), S_OK);
    EXPECT_EQ(result_.shown(), "11:true");
    EXPECT_EQ(call(getVariableId, {"Mode"}), S_OK);
    EXPECT_EQ(result_.shown(), "8:Online");
    EXPECT_EQ(call(completeOrderId, {}), S_OK);
    EXPECT_EQ(result_.type(), VT_EMPTY);
    EXPECT_EQ(call(47, {"Harbrook"}), S_OK);
    EXPECT_THAT(result_.shown(), testing::StartsWith("8:<"));
}

// As VBScript calls, which does not know whether a name is a property.
TEST_F(LateBinding, ACallMayBeTheReadingOfAProperty) {
    EXPECT_EQ(call(getVariableId, {"Mode"}, DISPATCH_METHOD | DISPATCH_PROPERTYGET), S_OK);
    EXPECT_EQ(result_.shown(), "8:Online");
}

TEST_F(LateBinding, NobodyNeedsToTakeTheResult) {
    Argument text = "Offline";
    DISPPARAMS given{text.get(), nullptr, 1, 0};
    EXPECT_EQ(client_->Invoke(setModeId, IID_NULL, LOCALE_USER_DEFAULT, asMethod, &given, nullptr,
                              nullptr, nullptr),
              S_OK);
    EXPECT_EQ(mode(), "8:Offline");
}

TEST_F(LateBinding, AStringTakesWhatHasAText) {
    EXPECT_EQ(modeSetBy("Offline"), "8:Offline");
    EXPECT_EQ(modeSetBy(7), "8:7");
    EXPECT_EQ(modeSetBy("Höhe"), "8:Höhe");
    EXPECT_EQ(modeSetBy(-2.0), "8:-2");
    EXPECT_EQ(modeSetBy(Argument()), "8:");
    for (Argument value : {Argument("text"), Argument(12)}) {
        const std::string expected = value.type() == VT_BSTR ? "8:text" : "8:12";
        EXPECT_EQ(modeSetBy(Argument::variable(value)), expected);
        EXPECT_EQ(modeSetBy(Argument::typedVariable(value)), expected);
        Argument variable = Argument::typedVariable(value);
        EXPECT_EQ(modeSetBy(Argument::variable(variable)), expected);
    }
}

TEST_F(LateBinding, AStringTakesNothingElse) {
    for (const Argument& argument : {Argument::null(), Argument::leftOut(), Argument::object()}) {
        const HRESULT why =
            argument.type() == VT_ERROR ? DISP_E_PARAMNOTOPTIONAL : DISP_E_TYPEMISMATCH;
        EXPECT_EQ(call(setModeId, {argument}), why) << argument.type();
        EXPECT_EQ(wrongArgument_, 0U) << argument.type();
        EXPECT_EQ(mode(), "8:Online") << argument.type();
    }
}

TEST_F(LateBinding, ANumberTakesWhatIsOne) {
    const auto details = [this](const Argument& error) {
        return call(getDetailsId, {1, 100201, "", "", "", error});
    };
    ASSERT_EQ(details(0), S_OK);
    const std::string expected = result_.shown();
    EXPECT_THAT(expected, testing::HasSubstr("100201"));
    for (const Argument& zero : {Argument("0"), Argument(0.0), Argument(false), Argument()}) {
        EXPECT_EQ(details(zero), S_OK) << zero.type();
        EXPECT_EQ(result_.shown(), expected) << zero.type();
    }
    EXPECT_EQ(details("zero"), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(wrongArgument_, 0U);  // counted from the last one
    EXPECT_EQ(details(70000), DISP_E_OVERFLOW);
    EXPECT_EQ(wrongArgument_, 0U);
}

TEST_F(LateBinding, AVariantTakesTextsAndNumbersAndNothing) {
    Argument number = "100202";
    const std::vector<Argument> orders{100201, Argument::variable(number), 100203.0, "100204"};
    for (const Argument& order : orders) {
        ASSERT_EQ(call(deleteNodeId, {order, Argument(), Argument::null(), Argument::leftOut()}),
                  S_OK)
            << order.type();
    }
    for (const char* gone : {"100201", "100202", "100203", "100204"}) {
        EXPECT_FALSE(hasOrder(gone)) << gone;
    }
    EXPECT_TRUE(hasOrder("100205"));
    EXPECT_EQ(call(deleteNodeId, {"100205", Argument(), Argument(), Argument::object()}),
              DISP_E_EXCEPTION);
    EXPECT_EQ(exception_.scode, DISP_E_TYPEMISMATCH);
    EXPECT_TRUE(hasOrder("100205"));
}

TEST_F(LateBinding, AVariableOfAScriptGetsWhatTheCallLeavesInIt) {
    Argument columns;
    ASSERT_EQ(call(columnHeadingsId, {Argument::variable(columns), "ccsocservclabr"}), S_OK);
    EXPECT_EQ(columns.type(), VT_I2);
    EXPECT_NE(columns.shown(), "2:0");
    Argument file = 42;
    ASSERT_EQ(call(setCurrentmdbId, {Argument::variable(file)}), S_OK);
    EXPECT_EQ(file.shown(), "8:42");
}

TEST_F(LateBinding, AVariableWithATypeKeepsIt) {
    Argument expected;
    ASSERT_EQ(call(columnHeadingsId, {Argument::variable(expected), "ccsocservclabr"}), S_OK);
    for (const VARTYPE type : {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_INT, VT_UINT, VT_R4,
                               VT_I8, VT_UI8, VT_R8, VT_CY, VT_BSTR}) {
        for (const bool isNested : {false, true}) {
            Argument columns = 0;
            ASSERT_EQ(::VariantChangeType(columns.get(), columns.get(), 0, type), S_OK);
            Argument typed = Argument::typedVariable(columns);
            const Argument given = isNested ? Argument::variable(typed) : typed;
            ASSERT_EQ(call(columnHeadingsId, {given, "ccsocservclabr"}), S_OK) << type;
            ASSERT_EQ(columns.type(), type);
            ASSERT_EQ(::VariantChangeType(columns.get(), columns.get(), 0, VT_I2), S_OK);
            EXPECT_EQ(columns.shown(), expected.shown()) << type;
        }
    }
}

TEST_F(LateBinding, AVariableThatCannotTakeAValueIsNamed) {
    Argument object = Argument::object();
    EXPECT_EQ(call(columnHeadingsId, {Argument::typedVariable(object), "ccsocservclabr"}),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(wrongArgument_, 1U);  // counted from the last one
}

TEST_F(LateBinding, AValueMayStandWhereAVariableIsExpected) {
    EXPECT_EQ(call(columnHeadingsId, {0, "ccsocservclabr"}), S_OK);
    EXPECT_THAT(result_.shown(), testing::StartsWith("8:<"));
    EXPECT_EQ(call(setCurrentmdbId, {"Parts"}), S_OK);
    EXPECT_EQ(call(getVariableId, {"Currentmdb"}), S_OK);
    EXPECT_EQ(result_.shown(), "8:Parts");
}

TEST_F(LateBinding, WhatCannotStandWhereAVariableIsExpectedIsNamed) {
    EXPECT_EQ(call(columnHeadingsId, {"many", "ccsocservclabr"}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(wrongArgument_, 1U);
}

TEST_F(LateBinding, ArgumentsMayBeNamed) {
    Argument columns, section = "ccsocservclabr";
    std::array<VARIANT, 2> values{*Argument::variable(columns).get(), *section.get()};
    std::array<DISPID, 2> names{0, 1};
    DISPPARAMS given{values.data(), names.data(), 2, 2};
    ASSERT_EQ(invoke(columnHeadingsId, given), S_OK);
    EXPECT_EQ(columns.type(), VT_I2);
    EXPECT_THAT(result_.shown(), testing::StartsWith("8:<"));
}

TEST_F(LateBinding, TheNumberOfArgumentsIsTheMethods) {
    EXPECT_EQ(call(setModeId, {"Offline", "more"}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(setModeId, {}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(mode(), "8:Online");
}

// What no engine does, but a program may by mistake, must not bring its process down.
TEST_F(LateBinding, PlacesThatAreNowhereAreRefused) {
    DISPPARAMS noArguments{nullptr, nullptr, 1, 0};
    EXPECT_EQ(invoke(setModeId, noArguments), E_INVALIDARG);
    Argument text = "Offline";
    DISPPARAMS noNames{text.get(), nullptr, 1, 1};
    EXPECT_EQ(invoke(setModeId, noNames), E_INVALIDARG);
    DISPID name = 0;
    DISPPARAMS moreNames{text.get(), &name, 1, 2};
    EXPECT_EQ(invoke(setModeId, moreNames), E_INVALIDARG);
    for (const VARTYPE type : {VT_VARIANT, VT_BSTR, VT_I2, VT_I4}) {
        Argument nowhere;
        nowhere.get()->vt = static_cast<VARTYPE>(VT_BYREF | type);
        nowhere.get()->byref = nullptr;
        Argument nested = Argument::variable(nowhere);
        for (Argument* argument : {&nowhere, &nested}) {
            DISPPARAMS one{argument->get(), nullptr, 1, 0};
            EXPECT_EQ(invoke(setModeId, one), E_INVALIDARG) << type;
            std::array<VARIANT, 2> two{*text.get(), *argument->get()};
            DISPPARAMS byReference{two.data(), nullptr, 2, 0};
            EXPECT_EQ(invoke(columnHeadingsId, byReference), E_INVALIDARG) << type;
            EXPECT_EQ(wrongArgument_, 1U) << type;
        }
        nowhere.get()->vt = VT_EMPTY;
    }
    EXPECT_EQ(client_->GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_USER_DEFAULT, &name), E_POINTER);
    EXPECT_EQ(mode(), "8:Online");
}

TEST_F(LateBinding, ThereAreNoOtherMembers) {
    for (const DISPID id : {DISPID{DISPID_VALUE}, DISPID{58}, DISPID{-1}}) {
        EXPECT_EQ(call(id, {}), DISP_E_MEMBERNOTFOUND) << id;
    }
    EXPECT_EQ(call(setModeId, {"x"}, DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND);
}

TEST_F(LateBinding, AFaultIsAnExceptionWithItsWords) {
    std::filesystem::remove(L"C:\\Vorn Tandril\\log.txt");
    ASSERT_EQ(call(6, {""}), DISP_E_EXCEPTION);
    EXPECT_EQ(exception_.scode, E_FAIL);
    EXPECT_EQ(taken(exception_.bstrSource), "Tandril.Client20");
    EXPECT_EQ(taken(exception_.bstrDescription),
              "cannot append to \"C:\\Vorn Tandril\\log.txt\": No such file or directory");
    EXPECT_EQ(taken(exception_.bstrHelpFile), "");
}

// Whoever asks for words after a failure that has none must not get those of an older one.
TEST_F(LateBinding, WordsBelongToTheirOwnFault) {
    std::filesystem::remove(L"C:\\Vorn Tandril\\log.txt");
    BSTR text = nullptr;
    ASSERT_EQ(client_->DownloadXml(nullptr, &text), E_FAIL);
    const Argument object = Argument::object();
    Argument nothing;
    ASSERT_EQ(client_->deleteNode(*nothing.get(), *nothing.get(), *nothing.get(),
                                  *Argument(object).get(), result_.get()),
              DISP_E_TYPEMISMATCH);
    ComPtr<IErrorInfo> words;
    EXPECT_EQ(::GetErrorInfo(0, &words), S_FALSE);
}

}  // namespace
}  // namespace tandril::test
