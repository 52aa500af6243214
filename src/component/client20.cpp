#include "component/client20.h"

#include "component/module.h"
#include "platform/fault.h"

namespace tandril {
namespace {

[[noreturn]] void notAvailableYet(const char* method) {
    throw Fault(std::string(method) + " is not available yet");
}

}  // namespace

Variant Client20::Initialize() {
    notAvailableYet("Initialize");
}

Variant Client20::SaveWebPage(const std::string&) {
    notAvailableYet("SaveWebPage");
}

std::string Client20::MyActivities(const std::string&) {
    notAvailableYet("MyActivities");
}

std::string Client20::completedAgenda() {
    notAvailableYet("completedAgenda");
}

std::string Client20::canceledAgenda() {
    notAvailableYet("canceledAgenda");
}

std::string Client20::DownloadXml(const std::string&) {
    notAvailableYet("DownloadXml");
}

std::string Client20::updatexml(const std::string&) {
    notAvailableYet("updatexml");
}

std::string Client20::AddXml(const std::string&) {
    notAvailableYet("AddXml");
}

std::string Client20::GetDetails(const std::string&, const std::string&, const std::string&,
                                 const std::string&, const std::string&, std::int16_t) {
    notAvailableYet("GetDetails");
}

std::string Client20::CreateForm(const std::string&, const std::string&, const std::string&) {
    notAvailableYet("CreateForm");
}

std::string Client20::CreateXMLStringForUpdate() {
    notAvailableYet("CreateXMLStringForUpdate");
}

std::string Client20::DownloadErrors(const std::string&) {
    notAvailableYet("DownloadErrors");
}

std::string Client20::ShowErrorPool() {
    notAvailableYet("ShowErrorPool");
}

std::string Client20::ShowErrorList() {
    notAvailableYet("ShowErrorList");
}

std::string Client20::ListCostLines(const std::string&, const std::string&, const std::string&) {
    notAvailableYet("ListCostLines");
}

Variant Client20::deleteNode(const Variant&, const Variant&, const Variant&, const Variant&) {
    notAvailableYet("deleteNode");
}

std::string Client20::ListOrders() {
    notAvailableYet("ListOrders");
}

std::string Client20::Get_Error() {
    notAvailableYet("Get_Error");
}

Variant Client20::SetCurrentmdb(std::string&) {
    notAvailableYet("SetCurrentmdb");
}

std::string Client20::GetVariable(const std::string&) {
    notAvailableYet("GetVariable");
}

Variant Client20::SetODBCDataBase(std::string&) {
    notAvailableYet("SetODBCDataBase");
}

Variant Client20::RegisterDownloadPath() {
    notAvailableYet("RegisterDownloadPath");
}

bool Client20::LocalXmlExists() {
    notAvailableYet("LocalXmlExists");
}

bool Client20::FMapperXMLExists() {
    notAvailableYet("FMapperXMLExists");
}

Variant Client20::getFMapper(const std::string&, const std::string&) {
    notAvailableYet("getFMapper");
}

Variant Client20::Set_Mode(const std::string&) {
    notAvailableYet("Set_Mode");
}

std::string Client20::HyperLinkAndZoom(std::int16_t, const std::string&, const std::string&,
                                       const std::string&) {
    notAvailableYet("HyperLinkAndZoom");
}

Variant Client20::OpenDataBase() {
    notAvailableYet("OpenDataBase");
}

Variant Client20::CloseDataBase() {
    notAvailableYet("CloseDataBase");
}

std::string Client20::MasterData(const std::string&) {
    notAvailableYet("MasterData");
}

Variant Client20::ExplodeZip(const std::string&) {
    notAvailableYet("ExplodeZip");
}

std::string Client20::CreateMaterialForm() {
    notAvailableYet("CreateMaterialForm");
}

std::string Client20::BuildCostLines(const std::string&, const std::string&, const std::string&) {
    notAvailableYet("BuildCostLines");
}

std::string Client20::CostLinesHeader(const std::string&, const std::string&) {
    notAvailableYet("CostLinesHeader");
}

std::string Client20::NewObject(const std::string&, const std::string&, const std::string&) {
    notAvailableYet("NewObject");
}

std::string Client20::CreateOrderDropDown() {
    notAvailableYet("CreateOrderDropDown");
}

std::string Client20::CreateActivityDropDown(const std::string&) {
    notAvailableYet("CreateActivityDropDown");
}

std::string Client20::SaveHra(const std::string&) {
    notAvailableYet("SaveHra");
}

Variant Client20::StroreErrorOrders() {
    notAvailableYet("StroreErrorOrders");
}

Variant Client20::deleteCompletedOrders(const std::string&) {
    notAvailableYet("deleteCompletedOrders");
}

std::string Client20::GetI18NString(const std::string&) {
    notAvailableYet("GetI18NString");
}

std::string Client20::Synchronize_MasterData(const std::string&) {
    notAvailableYet("Synchronize_MasterData");
}

std::string Client20::CreateFormforHra(const std::string&, const std::string&, const std::string&) {
    notAvailableYet("CreateFormforHra");
}

std::string Client20::ListHRALines(const std::string&, const std::string&, const std::string&) {
    notAvailableYet("ListHRALines");
}

std::string Client20::GetDetailsForHRA(const std::string&, const std::string&, const std::string&,
                                       const std::string&, const std::string&, std::int16_t) {
    notAvailableYet("GetDetailsForHRA");
}

std::string Client20::getColumnHeadingsForHRA(std::int16_t&, const std::string&) {
    notAvailableYet("getColumnHeadingsForHRA");
}

Variant Client20::GetMailContent(const std::string&) {
    notAvailableYet("GetMailContent");
}

Variant Client20::SetHomePage() {
    notAvailableYet("SetHomePage");
}

std::string Client20::ViewOrders_W() {
    notAvailableYet("ViewOrders_W");
}

std::string Client20::ViewOrders_SI() {
    notAvailableYet("ViewOrders_SI");
}

std::string Client20::ViewActivities_W() {
    notAvailableYet("ViewActivities_W");
}

std::string Client20::ViewActivities_SI() {
    notAvailableYet("ViewActivities_SI");
}

std::string Client20::ViewCostLines_W(const std::string&) {
    notAvailableYet("ViewCostLines_W");
}

std::string Client20::ViewCostLines_SI(const std::string&) {
    notAvailableYet("ViewCostLines_SI");
}

std::string Client20::ViewHra_W() {
    notAvailableYet("ViewHra_W");
}

std::string Client20::ViewHra_SI() {
    notAvailableYet("ViewHra_SI");
}

Variant Client20::CompleteOrder() {
    notAvailableYet("CompleteOrder");
}

}  // namespace tandril
