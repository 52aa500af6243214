// A program that was compiled against the interface calls all its slots, in their order. Each must
// answer what the class itself answers on a home that holds the same files.
#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <optional>
#include <tuple>
#include <utility>

#include "component/client20.h"
#include "component/methods.h"
#include "component/module.h"
#include "platform/fault.h"
#include "platform/home/file_drivers.h"
#include "platform/machine.h"
#include "platform/odbc/connection.h"
#include "platform/windows/real_ports.h"
#include "platform/windows/wide.h"
#include "support/read_file.h"
#include "support/temporary_home.h"
#include "surface/com/dll.h"

namespace tandril::test {
namespace {

using Microsoft::WRL::ComPtr;
using Values = std::vector<Value>;

// What a call came to: its result, or the words of its fault, and the arguments as it left them.
struct Outcome {
    Value result;
    std::string fault;
    Values arguments;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

std::string take(BSTR text) {
    std::string utf8 = platform::toUtf8({text, ::SysStringLen(text)});
    ::SysFreeString(text);
    return utf8;
}

BSTR allocate(const std::string& text) {
    const std::wstring wide = platform::toWide(text);
    return ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

// An argument or a result of each type of the interface: made from a value, and read as one.
template <class T>
struct Slot;

template <>
struct Slot<BSTR> {
    explicit Slot(const Value& value = std::string())
        : raw(allocate(std::get<std::string>(value))) {}
    Value value() { return take(std::exchange(raw, nullptr)); }
    BSTR pass() { return raw; }
    BSTR raw;
};
template <>
struct Slot<short> {
    explicit Slot(const Value& value = std::int16_t{}) : raw(std::get<std::int16_t>(value)) {}
    Value value() const { return raw; }
    short pass() const { return raw; }
    short raw;
};
template <>
struct Slot<VARIANT> {
    explicit Slot(const Value& value = {}) {
        ::VariantInit(&raw);
        if (const auto* text = std::get_if<std::string>(&value)) {
            raw.vt = VT_BSTR;
            raw.bstrVal = allocate(*text);
        }
    }
    Value value() {
        if (raw.vt == VT_BSTR) return take(raw.bstrVal);
        EXPECT_EQ(raw.vt, VT_EMPTY);
        return {};
    }
    VARIANT pass() const { return raw; }
    VARIANT raw;
};
template <class T>
struct Slot<T*> : Slot<T> {
    using Slot<T>::Slot;
    T* pass() { return &this->raw; }
};

// A result that is a number to the compiler is a boolean to the interface.
struct BooleanResult {
    Value value() const { return raw != VARIANT_FALSE; }
    VARIANT_BOOL* pass() { return &raw; }
    VARIANT_BOOL raw = VARIANT_FALSE;
};
template <class T>
using ResultSlot = std::conditional_t<std::is_same_v<T, VARIANT_BOOL*>, BooleanResult, Slot<T>>;

// The words of the last fault on this thread.
std::string faultText() {
    ComPtr<IErrorInfo> information;
    BSTR text = nullptr;
    if (::GetErrorInfo(0, &information) != S_OK) return "(no error information)";
    information->GetDescription(&text);
    return take(text);
}

template <class... Types, std::size_t... index>
Outcome callThrough(::_Client20& client, HRESULT (::_Client20::*method)(Types...),
                    const Values& arguments, std::index_sequence<index...>) {
    using All = std::tuple<Types...>;
    std::tuple<Slot<std::tuple_element_t<index, All>>...> given{
        Slot<std::tuple_element_t<index, All>>(arguments[index])...};
    ResultSlot<std::tuple_element_t<sizeof...(Types) - 1, All>> result;
    Outcome outcome;
    if (FAILED((client.*method)(std::get<index>(given).pass()..., result.pass()))) {
        outcome.fault = faultText();
    }
    outcome.result = result.value();
    (outcome.arguments.push_back(std::get<index>(given).value()), ...);
    return outcome;
}

using Call = Outcome (*)(::_Client20& client, const Values& arguments);

template <auto method>
struct Caller;
template <class... Types, HRESULT (::_Client20::*method)(Types...)>
struct Caller<method> {
    static Outcome call(::_Client20& client, const Values& arguments) {
        return callThrough(client, method, arguments,
                           std::make_index_sequence<sizeof...(Types) - 1>());
    }
};

struct Row {
    std::string_view name;
    Call call;
    Values arguments;
};

#define ROW(name, ...)                                        \
    Row {                                                     \
#name, &Caller < &::_Client20::name> ::call, Values { \
            __VA_ARGS__                                       \
        }                                                     \
    }

Value text(const char* value) {
    return std::string(value);
}
Value number(std::int16_t value) {
    return value;
}

const char* const refusals =
    "<UploadReport><File><record ServiceOrder='A1' Type='Error' Text='no'/></File></UploadReport>";

// In the order of the slots; what one changes, the next ones show.
std::vector<Row> rows(const std::string& orders) {
    return {
        ROW(Initialize),
        ROW(SaveWebPage, text("<p>Höhe</p>")),
        ROW(MyActivities, text("")),
        ROW(completedAgenda),
        ROW(canceledAgenda),
        ROW(DownloadXml, orders),
        ROW(updatexml, text("<harbrook><ccsocservcordr><record ServiceOrder='none'/>"
                            "</ccsocservcordr></harbrook>")),
        ROW(AddXml, text("<harbrook/>")),
        ROW(GetDetails, text("1"), text("100201"), text(""), text(""), text(""), number(0)),
        ROW(CreateForm, text("1"), text(""), text("")),
        ROW(CreateXMLStringForUpdate),
        ROW(DownloadErrors, text(refusals)),
        ROW(ShowErrorPool),
        ROW(ShowErrorList),
        ROW(ListCostLines, text("Material"), text("100201"), text("10")),
        ROW(deleteNode, Value(), Value(), Value(), Value()),
        ROW(ListOrders),
        ROW(Get_Error),
        ROW(SetCurrentmdb, text("Parts")),
        ROW(GetVariable, text("Currentmdb")),
        ROW(SetODBCDataBase, text("Parts.mdb")),
        ROW(RegisterDownloadPath),
        ROW(LocalXmlExists),
        ROW(FMapperXMLExists),
        ROW(getFMapper, text("<m/>"), text("N")),
        ROW(Set_Mode, text("Offline")),
        ROW(HyperLinkAndZoom, number(2), text("Problem"), text(""), text("order_100201")),
        ROW(OpenDataBase),
        ROW(CloseDataBase),
        ROW(MasterData, text("UNIT")),
        ROW(ExplodeZip, text("none.exe")),
        ROW(CreateMaterialForm),
        ROW(BuildCostLines, text("Material"), text("100201"), text("10")),
        ROW(CostLinesHeader, text("100201"), text("10")),
        ROW(NewObject, text("2"), text("100201"), text("")),
        ROW(CreateOrderDropDown),
        ROW(CreateActivityDropDown, text("100201")),
        ROW(SaveHra, text("<harbrook/>")),
        ROW(StroreErrorOrders),
        ROW(deleteCompletedOrders, text("")),
        ROW(GetI18NString, text("SLBEU0260")),
        ROW(Synchronize_MasterData, text("<HBMasterData><UNITS/></HBMasterData>")),
        ROW(CreateFormforHra, text("4"), text(""), text("")),
        ROW(ListHRALines, text("Labor"), text(""), text("")),
        ROW(GetDetailsForHRA, text("4"), text("100201"), text("10"), text("10"), text(""),
            number(0)),
        ROW(getColumnHeadingsForHRA, number(7), text("ccsocservclabr")),
        ROW(GetMailContent, text("Harbrook")),
        ROW(SetHomePage),
        ROW(ViewOrders_W),
        ROW(ViewOrders_SI),
        ROW(ViewActivities_W),
        ROW(ViewActivities_SI),
        ROW(ViewCostLines_W, text("Material")),
        ROW(ViewCostLines_SI, text("Material")),
        ROW(ViewHra_W),
        ROW(ViewHra_SI),
        ROW(CompleteOrder),
    };
}

// What the order of the slots keeps apart: the database is open, and the records are there.
std::vector<Row> furtherRows() {
    return {
        ROW(SetCurrentmdb, text("Parts")),
        ROW(SetODBCDataBase, text("Parts.mdb")),
        ROW(OpenDataBase),
        ROW(MasterData, text("UNIT")),
        ROW(HyperLinkAndZoom, number(1), text("Problem"), text("P1"), text("order_100201")),
        ROW(HyperLinkAndZoom, number(2), text("Problem"), text(""), text("order_100201")),
        ROW(Synchronize_MasterData,
            text("<x><HBMasterData COMP='100'><UNITS SERVICECENTER=''><row STATUS='M' ID='pcs'>"
                 "<DSCA>Stück</DSCA></row></UNITS></HBMasterData></x>")),
        ROW(MasterData, text("UNIT")),
        ROW(deleteNode, text("100201"), text("10"), text("10"), text("Material")),
        ROW(ListCostLines, text("Material"), text("100201"), text("10")),
        ROW(AddXml, text("<harbrook><ccsocservclabr><ServiceOrder ID='' Activity=''>"
                         "<record LineNumber='_1'><Hours>2</Hours></record></ServiceOrder>"
                         "</ccsocservclabr></harbrook>")),
        ROW(ListHRALines, text("Labor"), text(""), text("")),
        ROW(GetDetailsForHRA, text("4"), text(""), text(""), text("_1"), text(""), number(0)),
        ROW(ViewHra_W),
        ROW(BuildCostLines, text("4"), text("100201"), text("10")),
        ROW(deleteCompletedOrders, text("")),
        ROW(GetMailContent, text("Harbrook")),
    };
}

#undef ROW

class EarlyBinding : public testing::Test {
  protected:
    void SetUp() override {
        if (!isMachineOfTests()) GTEST_SKIP() << "drive C: is somebody's";
        clearMachine();
        std::filesystem::create_directories(L"C:\\Vorn Tandril\\MasterData");
        place("FieldMapper.xml", "fieldmapper-en.xml");
        place("Harbrook.xml", "orders.xml");
        placeDatabase();
    }
    void placeDatabase() {
        home_.makeFolder("Vorn Tandril/MasterData");
        const std::string path = home_.pathOf("Vorn Tandril/MasterData/Parts.mdb");
        {
            platform::odbc::OdbcConnection database(sqliteConnection(path));
            database.execute("CREATE TABLE UNITS (COMP TEXT, CUNI TEXT, DSCA TEXT)");
            database.execute("INSERT INTO UNITS VALUES ('100', 'pcs', 'Piece')");
            database.execute("CREATE TABLE PROBLEMS (COMP TEXT, CPRL TEXT, DSCA TEXT)");
            database.execute("INSERT INTO PROBLEMS VALUES ('100', 'P1', 'Größerer Schaden')");
        }
        std::filesystem::copy_file(std::filesystem::path(platform::toWide(path)),
                                   L"C:\\Vorn Tandril\\MasterData\\Parts.mdb");
    }
    // On drive C: and in the home of the class itself.
    void place(const std::string& name, const std::string& sample) {
        const std::string path = TANDRIL_SAMPLES "/" + sample;
        home_.write("Vorn Tandril/" + name, readFile(path));
        std::filesystem::copy_file(path, "C:\\Vorn Tandril\\" + name);
    }
    ~EarlyBinding() override {
        if (isMachineOfTests()) clearMachine();
    }

    Outcome callClass(const Row& row, const Method& method) {
        Outcome outcome;
        outcome.arguments = row.arguments;
        try {
            outcome.result = method.invoke(native_, outcome.arguments);
        } catch (const Fault& fault) {
            outcome.fault = fault.what();
        }
        return outcome;
    }

    // Makes the call in both ways. Returns whether there was much to compare.
    bool compareBoth(const Row& row) {
        const Outcome expected = callClass(row, *findMethod(row.name));
        const Outcome actual = row.call(*client_.Get(), row.arguments);
        EXPECT_EQ(actual.fault, expected.fault) << row.name;
        EXPECT_EQ(actual.arguments == expected.arguments, true) << row.name;
        if (expected.fault.empty()) {
            EXPECT_EQ(actual.result == expected.result, true) << row.name;
        }
        const auto* text = std::get_if<std::string>(&expected.result);
        return text != nullptr && text->size() > 100;
    }

    Apartment apartment_;
    Dll dll_;
    ComPtr<::_Client20> client_ = dll_.client();
    TemporaryHome home_;
    std::unique_ptr<platform::OwnedMachine> machine_ = platform::openMachine(home_.path());
    Module module_{machine_->machine()};
    Client20 native_{module_};
};

TEST_F(EarlyBinding, EverySlotAnswersAsTheClassDoes) {
    const std::vector<Row> table = rows(readFile(TANDRIL_SAMPLES "/orders.xml"));
    ASSERT_EQ(table.size(), methods().size());
    int texts = 0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        ASSERT_EQ(table[i].name, methods()[i].name);
        texts += compareBoth(table[i]);
    }
    // The calls are such that there is much to compare.
    EXPECT_GE(texts, 25);
    texts = 0;
    for (const Row& row : furtherRows()) texts += compareBoth(row);
    EXPECT_GE(texts, 10);
}

TEST_F(EarlyBinding, AFaultArrivesWithItsWords) {
    client_->Initialize(nullptr);
    std::filesystem::remove(L"C:\\Vorn Tandril\\log.txt");
    VARIANT result;
    ::VariantInit(&result);
    EXPECT_EQ(client_->CloseDataBase(&result), S_OK);
    BSTR text = nullptr;
    const BSTR nothing = nullptr;
    EXPECT_EQ(client_->DownloadXml(nothing, &text), E_FAIL);
    EXPECT_THAT(faultText(), testing::HasSubstr("C:\\Vorn Tandril\\log.txt"));
    EXPECT_EQ(text, nullptr);
}

TEST_F(EarlyBinding, AResultNeedsAPlace) {
    EXPECT_EQ(client_->Initialize(nullptr), E_POINTER);
    EXPECT_EQ(client_->LocalXmlExists(nullptr), E_POINTER);
    VARIANT result;
    EXPECT_EQ(client_->SetCurrentmdb(nullptr, &result), E_POINTER);
}

}  // namespace
}  // namespace tandril::test
