#include "component/client20.h"

#include "component/call.h"
#include "component/environment.h"
#include "component/form_calls.h"
#include "component/list_calls.h"
#include "component/masterdata_calls.h"
#include "component/module.h"
#include "component/paths.h"
#include "component/report_calls.h"
#include "component/store_calls.h"

namespace tandril {
namespace {

std::string_view textOf(const Variant& argument) {
    return argument.text ? std::string_view(*argument.text) : std::string_view();
}

// How the page says that it opens a record to correct an error of the upload.
bool correctsError(std::int16_t argument) {
    return argument == 1;
}

}  // namespace

// A method that leaves the error text alone and returns an empty variant.
template <class Body>
Variant Client20::runEmpty(Body body) {
    return run(module_, ErrorAtEntry::Kept, "", [&](Call& call) {
        body(call);
        return Variant();
    });
}

// A method that shows or changes records: its error text reads "1" while it runs.
template <class Body>
auto Client20::runOnRecords(std::string_view action, Body body) {
    return run(module_, ErrorAtEntry::Reset, action, body);
}

// A method that shows a form or a part of one.
template <class Body>
std::string Client20::showForm(Body body) {
    return runOnRecords("", body);
}

std::string Client20::showRecords(std::string_view action, views::RecordList list) {
    return run(module_, ErrorAtEntry::Reset, action,
               [&](Call& call) { return lists::records(call, list); });
}

std::string Client20::showCostLines(views::Lines lines, std::string_view costType,
                                    std::string_view order, std::string_view activity) {
    return run(module_, ErrorAtEntry::Reset, "List Cost Lines", [&](Call& call) {
        return lists::costLines(call, lines, costType, order, activity);
    });
}

std::string Client20::showHourRegistrations(views::Lines lines) {
    return run(module_, ErrorAtEntry::Reset, "List Cost Lines",
               [&](Call& call) { return lists::hourRegistrations(call, lines); });
}

Variant Client20::Initialize() {
    return run(module_, ErrorAtEntry::Kept, "",
               [](Call& call) { return Variant{environment::initialize(call)}; });
}

Variant Client20::SaveWebPage(const std::string& iHtml) {
    return run(module_, ErrorAtEntry::Kept, "Save Web Page",
               [&](Call& call) { return environment::saveWebPage(call, iHtml); });
}

std::string Client20::MyActivities(const std::string&) {
    return showRecords("My Activities", views::RecordList::MyActivities);
}

std::string Client20::completedAgenda() {
    return showRecords("My Activities", views::RecordList::CompletedAgenda);
}

std::string Client20::canceledAgenda() {
    return showRecords("My Activities", views::RecordList::CanceledAgenda);
}

std::string Client20::DownloadXml(const std::string& iXML) {
    return runOnRecords("Download XML",
                        [&](Call& call) { return store_calls::download(call, iXML); });
}

std::string Client20::updatexml(const std::string& iXML) {
    return runOnRecords("Update XML", [&](Call& call) { return store_calls::edit(call, iXML); });
}

std::string Client20::AddXml(const std::string& iXML) {
    return runOnRecords("Add XML", [&](Call& call) { return store_calls::add(call, iXML); });
}

std::string Client20::GetDetails(const std::string& iObject, const std::string& iOrno,
                                 const std::string& iAcln, const std::string& iLine,
                                 const std::string&, std::int16_t iError) {
    return showForm([&](Call& call) {
        return form_calls::details(call, iObject, {iOrno, iAcln, iLine}, correctsError(iError));
    });
}

std::string Client20::CreateForm(const std::string& iObject, const std::string& iOrno,
                                 const std::string& iAcln) {
    return showForm([&](Call& call) {
        return form_calls::creation(call, iObject, {iOrno, iAcln, ""});
    });
}

std::string Client20::CreateXMLStringForUpdate() {
    return runOnRecords("", [](Call& call) { return store_calls::upload(call); });
}

std::string Client20::DownloadErrors(const std::string& iXML) {
    return runOnRecords("Download Errors",
                        [&](Call& call) { return report_calls::take(call, iXML); });
}

std::string Client20::ShowErrorPool() {
    return runOnRecords("Error Pool", [](Call& call) { return report_calls::errorPool(call); });
}

std::string Client20::ShowErrorList() {
    return runOnRecords("Error Pool", [](Call& call) { return report_calls::errorList(call); });
}

std::string Client20::ListCostLines(const std::string& iCostType, const std::string& iorder,
                                    const std::string& iActivity) {
    return showCostLines(views::Lines::OfActivity, iCostType, iorder, iActivity);
}

Variant Client20::deleteNode(const Variant& iorder, const Variant& iActivity, const Variant& iLine,
                             const Variant& iCostType) {
    return runOnRecords("", [&](Call& call) {
        store_calls::deleteRecord(call, textOf(iorder), textOf(iActivity), textOf(iLine),
                                  textOf(iCostType));
        return Variant();
    });
}

std::string Client20::ListOrders() {
    return showRecords("List Orders", views::RecordList::Orders);
}

std::string Client20::Get_Error() {
    return run(module_, ErrorAtEntry::Kept, "", [](Call& call) { return call.error(); });
}

Variant Client20::SetCurrentmdb(std::string& iFName) {
    return runEmpty([&](Call& call) { call.settings().setCurrentDatabase(iFName); });
}

std::string Client20::GetVariable(const std::string& iVar) {
    return run(module_, ErrorAtEntry::Kept, "",
               [&](Call& call) { return environment::variable(call, iVar); });
}

Variant Client20::SetODBCDataBase(std::string& iName) {
    return runEmpty([&](Call& call) { environment::setDataSourceFile(call, iName); });
}

Variant Client20::RegisterDownloadPath() {
    return runEmpty([](Call& call) { call.settings().setDownloadFolder(paths::masterDataFolder); });
}

// NOLINTNEXTLINE(readability-make-member-function-const): like the other methods
bool Client20::LocalXmlExists() {
    return module_.machine.files.fileExists(paths::store);
}

// NOLINTNEXTLINE(readability-make-member-function-const): like the other methods
bool Client20::FMapperXMLExists() {
    return module_.machine.files.fileExists(paths::fieldMapper);
}

Variant Client20::getFMapper(const std::string& iXML, const std::string& iOverwrite) {
    return runEmpty([&](Call& call) { environment::storeFieldMapper(call, iXML, iOverwrite); });
}

Variant Client20::Set_Mode(const std::string& iMode) {
    return runEmpty([&](Call& call) { call.settings().setMode(iMode); });
}

std::string Client20::HyperLinkAndZoom(std::int16_t iMode, const std::string& iXmlTag,
                                       const std::string& iValue, const std::string&) {
    return run(module_, ErrorAtEntry::Kept, "", [&](Call& call) {
        return masterdata_calls::fieldWindow(call, iMode, iXmlTag, iValue);
    });
}

Variant Client20::OpenDataBase() {
    return runEmpty([](Call& call) { masterdata_calls::open(call); });
}

Variant Client20::CloseDataBase() {
    return runEmpty([](Call& call) { masterdata_calls::close(call); });
}

std::string Client20::MasterData(const std::string& iCode) {
    return run(module_, ErrorAtEntry::Kept, "",
               [&](Call& call) { return masterdata_calls::listing(call, iCode); });
}

Variant Client20::ExplodeZip(const std::string& iFileName) {
    return runEmpty([&](Call& call) { masterdata_calls::startArchive(call, iFileName); });
}

std::string Client20::CreateMaterialForm() {
    return showForm([](Call& call) { return form_calls::newMaterialLine(call); });
}

std::string Client20::BuildCostLines(const std::string& icType, const std::string& iOrno,
                                     const std::string& iAcln) {
    return run(module_, ErrorAtEntry::Reset, "",
               [&](Call& call) { return lists::activityCostLines(call, icType, iOrno, iAcln); });
}

std::string Client20::CostLinesHeader(const std::string& iOrno, const std::string& iAcln) {
    return run(module_, ErrorAtEntry::Reset, "",
               [&](Call& call) { return lists::costLinesHeader(call, iOrno, iAcln); });
}

std::string Client20::NewObject(const std::string& iObject, const std::string&,
                                const std::string&) {
    return showForm([&](Call& call) { return form_calls::newActivity(call, iObject); });
}

std::string Client20::CreateOrderDropDown() {
    return showForm([](Call& call) { return form_calls::orderOptions(call); });
}

std::string Client20::CreateActivityDropDown(const std::string& iorder) {
    return showForm([&](Call& call) { return form_calls::activityOptions(call, iorder); });
}

std::string Client20::SaveHra(const std::string& iXML) {
    return runOnRecords("",
                        [&](Call& call) { return store_calls::addHourRegistration(call, iXML); });
}

Variant Client20::StroreErrorOrders() {
    return runEmpty([](Call& call) { report_calls::collectErrorOrders(call); });
}

Variant Client20::deleteCompletedOrders(const std::string&) {
    return runOnRecords("", [](Call& call) {
        store_calls::purge(call);
        return Variant();
    });
}

std::string Client20::GetI18NString(const std::string& label) {
    return run(module_, ErrorAtEntry::Kept, "", [&](Call& call) { return call.label(label); });
}

std::string Client20::Synchronize_MasterData(const std::string& iXML) {
    return run(module_, ErrorAtEntry::Kept, "",
               [&](Call& call) { return masterdata_calls::synchronise(call, iXML); });
}

std::string Client20::CreateFormforHra(const std::string&, const std::string&, const std::string&) {
    return showForm([](Call& call) { return form_calls::newRegistration(call); });
}

std::string Client20::ListHRALines(const std::string&, const std::string&, const std::string&) {
    return showHourRegistrations(views::Lines::OfActivity);
}

std::string Client20::GetDetailsForHRA(const std::string&, const std::string& iOrno,
                                       const std::string& iAcln, const std::string& iLine,
                                       const std::string&, std::int16_t iError) {
    return showForm([&](Call& call) {
        return form_calls::registrationDetails(call, {iOrno, iAcln, iLine}, correctsError(iError));
    });
}

std::string Client20::getColumnHeadingsForHRA(std::int16_t& iCols, const std::string& iBoiTag) {
    return showForm(
        [&](Call& call) { return form_calls::registrationHeadings(call, iCols, iBoiTag); });
}

Variant Client20::GetMailContent(const std::string& iWhat) {
    return run(module_, ErrorAtEntry::Kept, "",
               [&](Call& call) { return environment::mailContent(call, iWhat); });
}

Variant Client20::SetHomePage() {
    return runEmpty([](Call& call) { call.settings().setStartPage(paths::page); });
}

std::string Client20::ViewOrders_W() {
    return showRecords("List Orders", views::RecordList::WorkingOrders);
}

std::string Client20::ViewOrders_SI() {
    return showRecords("List Orders", views::RecordList::SentOrders);
}

std::string Client20::ViewActivities_W() {
    return showRecords("My Activities", views::RecordList::WorkingActivities);
}

std::string Client20::ViewActivities_SI() {
    return showRecords("My Activities", views::RecordList::SentActivities);
}

std::string Client20::ViewCostLines_W(const std::string& iCostType) {
    return showCostLines(views::Lines::Working, iCostType, "", "");
}

std::string Client20::ViewCostLines_SI(const std::string& iCostType) {
    return showCostLines(views::Lines::Sent, iCostType, "", "");
}

std::string Client20::ViewHra_W() {
    return showHourRegistrations(views::Lines::Working);
}

std::string Client20::ViewHra_SI() {
    return showHourRegistrations(views::Lines::Sent);
}

Variant Client20::CompleteOrder() {
    return runOnRecords("", [](Call& call) {
        store_calls::completeOrders(call);
        return Variant();
    });
}

}  // namespace tandril
