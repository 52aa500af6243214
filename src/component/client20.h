#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tandril::views {
enum class Lines;
enum class RecordList;
}  // namespace tandril::views

namespace tandril {

struct Module;

// A value of the variant kind: empty, or a text. The component hands out and takes no others.
struct Variant {
    std::optional<std::string> text;
};

// The one class that a page, a script or a program calls. Its 57 methods keep a field-service
// engineer's orders, activities, cost lines and hour registrations in local files, render them as
// HTML fragments, and exchange them with the enterprise server as XML texts. docs/behaviour.md says
// what each method does; component/methods.h lists them with their parameter names and slots, which
// are the contract with every caller and keep their odd spellings.
//
// All texts are UTF-8. Methods run one at a time: an object, and all objects of one Module, are
// used from one thread.
//
// A failure that the page can show (a file that does not load, a record that is not there) leaves
// its text in Get_Error() and is returned as each method says. Anything else (a missing log file, a
// failed write, a closed database connection) is thrown as Fault; the files are whole then and hold
// what was done before the fault.
class Client20 {
  public:
    // Works on the machine and the module-wide state of `module`, which must outlive the object.
    explicit Client20(Module& module) : module_(module) {}

    Variant Initialize();
    Variant SaveWebPage(const std::string& iHtml);
    std::string MyActivities(const std::string& iXML);
    std::string completedAgenda();
    std::string canceledAgenda();
    std::string DownloadXml(const std::string& iXML);
    std::string updatexml(const std::string& iXML);
    std::string AddXml(const std::string& iXML);
    std::string GetDetails(const std::string& iObject, const std::string& iOrno,
                           const std::string& iAcln, const std::string& iLine,
                           const std::string& iXML, std::int16_t iError);
    std::string CreateForm(const std::string& iObject, const std::string& iOrno,
                           const std::string& iAcln);
    std::string CreateXMLStringForUpdate();
    std::string DownloadErrors(const std::string& iXML);
    std::string ShowErrorPool();
    std::string ShowErrorList();
    std::string ListCostLines(const std::string& iCostType, const std::string& iorder,
                              const std::string& iActivity);
    Variant deleteNode(const Variant& iorder, const Variant& iActivity, const Variant& iLine,
                       const Variant& iCostType);
    std::string ListOrders();
    std::string Get_Error();
    Variant SetCurrentmdb(std::string& iFName);
    std::string GetVariable(const std::string& iVar);
    Variant SetODBCDataBase(std::string& iName);
    Variant RegisterDownloadPath();
    bool LocalXmlExists();
    bool FMapperXMLExists();
    Variant getFMapper(const std::string& iXML, const std::string& iOverwrite);
    Variant Set_Mode(const std::string& iMode);
    std::string HyperLinkAndZoom(std::int16_t iMode, const std::string& iXmlTag,
                                 const std::string& iValue, const std::string& iFormName);
    Variant OpenDataBase();
    Variant CloseDataBase();
    std::string MasterData(const std::string& iCode);
    Variant ExplodeZip(const std::string& iFileName);
    std::string CreateMaterialForm();
    std::string BuildCostLines(const std::string& icType, const std::string& iOrno,
                               const std::string& iAcln);
    std::string CostLinesHeader(const std::string& iOrno, const std::string& iAcln);
    std::string NewObject(const std::string& iObject, const std::string& iOrno,
                          const std::string& iAcln);
    std::string CreateOrderDropDown();
    std::string CreateActivityDropDown(const std::string& iorder);
    std::string SaveHra(const std::string& iXML);
    Variant StroreErrorOrders();
    Variant deleteCompletedOrders(const std::string& iXML);
    std::string GetI18NString(const std::string& label);
    std::string Synchronize_MasterData(const std::string& iXML);
    std::string CreateFormforHra(const std::string& iObject, const std::string& iOrno,
                                 const std::string& iAcln);
    std::string ListHRALines(const std::string& iCostType, const std::string& iorder,
                             const std::string& iActivity);
    std::string GetDetailsForHRA(const std::string& iObject, const std::string& iOrno,
                                 const std::string& iAcln, const std::string& iLine,
                                 const std::string& iXML, std::int16_t iError);
    std::string getColumnHeadingsForHRA(std::int16_t& iCols, const std::string& iBoiTag);
    Variant GetMailContent(const std::string& iWhat);
    Variant SetHomePage();
    std::string ViewOrders_W();
    std::string ViewOrders_SI();
    std::string ViewActivities_W();
    std::string ViewActivities_SI();
    std::string ViewCostLines_W(const std::string& iCostType);
    std::string ViewCostLines_SI(const std::string& iCostType);
    std::string ViewHra_W();
    std::string ViewHra_SI();
    Variant CompleteOrder();

  private:
    template <class Body>
    Variant runEmpty(Body body);
    template <class Body>
    auto runOnRecords(std::string_view action, Body body);
    template <class Body>
    std::string showForm(Body body);
    std::string showRecords(std::string_view action, views::RecordList list);
    std::string showCostLines(views::Lines lines, std::string_view costType, std::string_view order,
                              std::string_view activity);
    std::string showHourRegistrations(views::Lines lines);

    Module& module_;
};

}  // namespace tandril
