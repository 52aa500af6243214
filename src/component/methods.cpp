#include "component/methods.h"

#include <array>
#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

#include "component/client20.h"
#include "platform/ascii.h"

namespace tandril {
namespace {

template <class T>
constexpr Kind kindOf() {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Plain, std::string>) {
        return Kind::String;
    } else if constexpr (std::is_same_v<Plain, Variant>) {
        return Kind::Variant;
    } else if constexpr (std::is_same_v<Plain, bool>) {
        return Kind::Boolean;
    } else {
        static_assert(std::is_same_v<Plain, std::int16_t>, "no kind for this type");
        return Kind::Int16;
    }
}

template <class T>
constexpr bool isByReference =
    std::is_lvalue_reference_v<T> && !std::is_const_v<std::remove_reference_t<T>>;

template <class T>
T toNative(const Value& value) {
    if constexpr (std::is_same_v<T, Variant>) {
        const auto* text = std::get_if<std::string>(&value);
        return text != nullptr ? Variant{*text} : Variant{};
    } else {
        return std::get<T>(value);
    }
}

template <class T>
Value toValue(T native) {
    if constexpr (std::is_same_v<T, Variant>) {
        return native.text ? Value(std::move(*native.text)) : Value();
    } else {
        return Value(std::move(native));
    }
}

template <class Member>
struct Signature;

template <class Result, class... Arguments>
struct Signature<Result (Client20::*)(Arguments...)> {
    static constexpr Kind result = kindOf<Result>();
    static constexpr std::size_t count = sizeof...(Arguments);
    using Names = std::array<std::string_view, count>;

    static std::vector<Parameter> parameters([[maybe_unused]] const Names& names) {
        [[maybe_unused]] std::size_t index = 0;
        return {Parameter{names[index++], kindOf<Arguments>(), isByReference<Arguments>}...};
    }

    template <auto member>
    static Value invoke(Client20& client, std::span<Value> arguments) {
        return invokeWith<member>(client, arguments, std::index_sequence_for<Arguments...>());
    }

  private:
    template <auto member, std::size_t... index>
    static Value invokeWith(Client20& client, [[maybe_unused]] std::span<Value> arguments,
                            std::index_sequence<index...>) {
        std::tuple<std::remove_cvref_t<Arguments>...> natives{
            toNative<std::remove_cvref_t<Arguments>>(arguments[index])...};
        Value returned = toValue((client.*member)(std::get<index>(natives)...));
        ((isByReference<Arguments> ? void(arguments[index] = toValue(std::get<index>(natives)))
                                   : void()),
         ...);
        return returned;
    }
};

template <auto member>
Method row(int slot, std::string_view name,
           const typename Signature<decltype(member)>::Names& names = {}) {
    using Shape = Signature<decltype(member)>;
    return {slot, name, Shape::parameters(names), Shape::result, &Shape::template invoke<member>};
}

// NOLINTNEXTLINE(readability-function-size): one row per method
std::vector<Method> makeTable() {
    using C = Client20;
    return {
        row<&C::Initialize>(1, "Initialize"),
        row<&C::SaveWebPage>(2, "SaveWebPage", {"iHtml"}),
        row<&C::MyActivities>(3, "MyActivities", {"iXML"}),
        row<&C::completedAgenda>(4, "completedAgenda"),
        row<&C::canceledAgenda>(5, "canceledAgenda"),
        row<&C::DownloadXml>(6, "DownloadXml", {"iXML"}),
        row<&C::updatexml>(7, "updatexml", {"iXML"}),
        row<&C::AddXml>(8, "AddXml", {"iXML"}),
        row<&C::GetDetails>(9, "GetDetails",
                            {"iObject", "iOrno", "iAcln", "iLine", "iXML", "iError"}),
        row<&C::CreateForm>(10, "CreateForm", {"iObject", "iOrno", "iAcln"}),
        row<&C::CreateXMLStringForUpdate>(11, "CreateXMLStringForUpdate"),
        row<&C::DownloadErrors>(12, "DownloadErrors", {"iXML"}),
        row<&C::ShowErrorPool>(13, "ShowErrorPool"),
        row<&C::ShowErrorList>(14, "ShowErrorList"),
        row<&C::ListCostLines>(15, "ListCostLines", {"iCostType", "iorder", "iActivity"}),
        row<&C::deleteNode>(16, "deleteNode", {"iorder", "iActivity", "iLine", "iCostType"}),
        row<&C::ListOrders>(17, "ListOrders"),
        row<&C::Get_Error>(18, "Get_Error"),
        row<&C::SetCurrentmdb>(19, "SetCurrentmdb", {"iFName"}),
        row<&C::GetVariable>(20, "GetVariable", {"iVar"}),
        row<&C::SetODBCDataBase>(21, "SetODBCDataBase", {"iName"}),
        row<&C::RegisterDownloadPath>(22, "RegisterDownloadPath"),
        row<&C::LocalXmlExists>(23, "LocalXmlExists"),
        row<&C::FMapperXMLExists>(24, "FMapperXMLExists"),
        row<&C::getFMapper>(25, "getFMapper", {"iXML", "iOverwrite"}),
        row<&C::Set_Mode>(26, "Set_Mode", {"iMode"}),
        row<&C::HyperLinkAndZoom>(27, "HyperLinkAndZoom",
                                  {"iMode", "iXmlTag", "iValue", "iFormName"}),
        row<&C::OpenDataBase>(28, "OpenDataBase"),
        row<&C::CloseDataBase>(29, "CloseDataBase"),
        row<&C::MasterData>(30, "MasterData", {"iCode"}),
        row<&C::ExplodeZip>(31, "ExplodeZip", {"iFileName"}),
        row<&C::CreateMaterialForm>(32, "CreateMaterialForm"),
        row<&C::BuildCostLines>(33, "BuildCostLines", {"icType", "iOrno", "iAcln"}),
        row<&C::CostLinesHeader>(34, "CostLinesHeader", {"iOrno", "iAcln"}),
        row<&C::NewObject>(35, "NewObject", {"iObject", "iOrno", "iAcln"}),
        row<&C::CreateOrderDropDown>(36, "CreateOrderDropDown"),
        row<&C::CreateActivityDropDown>(37, "CreateActivityDropDown", {"iorder"}),
        row<&C::SaveHra>(38, "SaveHra", {"iXML"}),
        row<&C::StroreErrorOrders>(39, "StroreErrorOrders"),
        row<&C::deleteCompletedOrders>(40, "deleteCompletedOrders", {"iXML"}),
        row<&C::GetI18NString>(41, "GetI18NString", {"label"}),
        row<&C::Synchronize_MasterData>(42, "Synchronize_MasterData", {"iXML"}),
        row<&C::CreateFormforHra>(43, "CreateFormforHra", {"iObject", "iOrno", "iAcln"}),
        row<&C::ListHRALines>(44, "ListHRALines", {"iCostType", "iorder", "iActivity"}),
        row<&C::GetDetailsForHRA>(45, "GetDetailsForHRA",
                                  {"iObject", "iOrno", "iAcln", "iLine", "iXML", "iError"}),
        row<&C::getColumnHeadingsForHRA>(46, "getColumnHeadingsForHRA", {"iCols", "iBoiTag"}),
        row<&C::GetMailContent>(47, "GetMailContent", {"iWhat"}),
        row<&C::SetHomePage>(48, "SetHomePage"),
        row<&C::ViewOrders_W>(49, "ViewOrders_W"),
        row<&C::ViewOrders_SI>(50, "ViewOrders_SI"),
        row<&C::ViewActivities_W>(51, "ViewActivities_W"),
        row<&C::ViewActivities_SI>(52, "ViewActivities_SI"),
        row<&C::ViewCostLines_W>(53, "ViewCostLines_W", {"iCostType"}),
        row<&C::ViewCostLines_SI>(54, "ViewCostLines_SI", {"iCostType"}),
        row<&C::ViewHra_W>(55, "ViewHra_W"),
        row<&C::ViewHra_SI>(56, "ViewHra_SI"),
        row<&C::CompleteOrder>(57, "CompleteOrder"),
    };
}

}  // namespace

std::span<const Method> methods() {
    static const std::vector<Method> table = makeTable();
    return table;
}

const Method* findMethod(std::string_view name) {
    const std::string folded = platform::foldAscii(name);
    for (const Method& method : methods()) {
        if (platform::foldAscii(method.name) == folded) {
            return &method;
        }
    }
    return nullptr;
}

std::string_view kindName(Kind kind) {
    switch (kind) {
        case Kind::String:
            return "string";
        case Kind::Variant:
            return "variant";
        case Kind::Boolean:
            return "boolean";
        case Kind::Int16:
            return "16-bit integer";
    }
    return "";
}

std::string signature(const Method& method) {
    std::string text(method.name);
    text += '(';
    for (const Parameter& parameter : method.parameters) {
        if (text.back() != '(') {
            text += ", ";
        }
        text += parameter.name;
        text += ": ";
        text += kindName(parameter.kind);
        if (parameter.byReference) {
            text += " by reference";
        }
    }
    text += ") -> ";
    text += kindName(method.result);
    return text;
}

}  // namespace tandril
