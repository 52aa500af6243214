"""The sample week as one working day that calls every method, from a machine on which nothing is yet."""

import csv

import days

SAMPLES = days.PROJECT / "samples"

EDITS = [f"""<harbrook><ccsocservcactv><ServiceOrder ID="100201"><record Activity="{activity}" State="O">
<ActivityStatus>20</ActivityStatus><ActivityDescription>Probelauf, 2 × geprüft</ActivityDescription>
</record></ServiceOrder></ccsocservcactv></harbrook>""" for activity in ("10", "20")]
COMPLETED = """<harbrook><ccsocservcordr><record ServiceOrder="100204" State="O">
<OrderStatus>20</OrderStatus></record></ccsocservcordr></harbrook>"""
CANCELED = COMPLETED.replace("100204", "100205").replace("20</OrderStatus>", "35</OrderStatus>")
NEW_ORDER = """<harbrook><ccsocservcordr><record ServiceOrder="_1"><OrderStatus>15</OrderStatus>
<OrderDate>20261113 160000</OrderDate><Description>Door of the lift sticks</Description>
</record></ccsocservcordr></harbrook>"""
NEW_ACTIVITY = """<harbrook><ccsocservcactv><ServiceOrder ID="_1" State="N"><record Activity="_1">
<ActivityStatus>15</ActivityStatus><ActivityDescription>Grease the rails</ActivityDescription>
</record></ServiceOrder></ccsocservcactv></harbrook>"""
NEW_LINE = """<harbrook><ccsocservcmatl><ServiceOrder ID="_1" Activity="_1"><record LineNumber="_1">
<Item>FLT-400</Item><Description>Fett, 400 g</Description><Quantity>1,5</Quantity>
</record></ServiceOrder></ccsocservcmatl></harbrook>"""
OWN_HOURS = """<harbrook><ccsocservclabr><ServiceOrder ID="" Activity=""><record LineNumber="_3">
<Description>Office, Friday</Description><StartDate>20261113 150000</StartDate><Hours>1.0</Hours>
</record></ServiceOrder></ccsocservclabr></harbrook>"""
NEW_HOURS = """<harbrook><ccsocservchra><record LineNumber="_2" State="N"><Description>Drive home</Description>
<StartDate>20261113 170000</StartDate><EndDate>20261113 174500</EndDate><Task>T-300</Task>
<HourlyLaborType>N</HourlyLaborType><Hours>0.75</Hours></record></ccsocservchra></harbrook>"""
REPORT = """<UploadReport><File ID="U1">
<Entry Status="Error" Order="_1" Activity="_1" CostLine="_1" CostType="Material">No such item &amp; no stock</Entry>
<Entry Status="Completed" Order="100201" Activity="20" CostLine="" CostType="">100201</Entry>
</File></UploadReport>"""

LISTS = (
    ["MyActivities", ""], ["completedAgenda"], ["canceledAgenda"], ["ListOrders"],
    ["ListCostLines", "Material", "100201", "10"], ["ListCostLines", "Labor", "100201", "10"],
    ["ListHRALines", "Labor", "", ""], ["ViewOrders_W"], ["ViewOrders_SI"],
    ["ViewActivities_W"], ["ViewActivities_SI"], ["ViewCostLines_W", "Material"],
    ["ViewCostLines_SI", "Labor"], ["ViewHra_W"], ["ViewHra_SI"],
)
CALLS = (
    ["LocalXmlExists"], ["FMapperXMLExists"], ["Initialize"], ["Get_Error"],
    ["getFMapper", SAMPLES / "fieldmapper-de.xml", "Yes"], ["FMapperXMLExists"], ["Initialize"],
    ["GetI18NString", "SLBEU0260"], ["GetVariable", "Mode"], ["Set_Mode", "Offline"],
    ["GetVariable", "Mode"], ["RegisterDownloadPath"], ["SetHomePage"],
    ["SaveWebPage", "<p>Wartung</p>"],
    # Master data.
    ["SetCurrentmdb", "tandril"], ["SetODBCDataBase", "tandril.mdb"], ["GetVariable", "Currentmdb"],
    ["MasterData", "UNIT"], ["OpenDataBase"], ["MasterData", "UNIT"],
    ["Synchronize_MasterData", SAMPLES / "masterdata/extract.xml"], ["MasterData", "PROB"],
    ["HyperLinkAndZoom", 1, "Problem", "P05", "order"],
    ["HyperLinkAndZoom", 2, "Object", "", "activity"], ["CloseDataBase"],
    # The download, and what it shows.
    ["DownloadXml", "<harbrook>"], ["Get_Error"], ["DownloadXml", SAMPLES / "orders.xml"],
    ["LocalXmlExists"], *LISTS,
    ["GetDetails", "1", "100201", "", "", "", 0], ["GetDetails", "2", "100201", "10", "", "", 0],
    ["GetDetails", "3", "100201", "10", "10", "", 0], ["CostLinesHeader", "100201", "10"],
    ["BuildCostLines", "3", "100201", "10"], ["BuildCostLines", "4", "100201", "10"],
    ["getColumnHeadingsForHRA", 0, "ccsocservclabr"],
    # Forms, and what they save.
    ["CreateForm", "1", "", ""], ["CreateForm", "2", "100201", ""], ["CreateMaterialForm"],
    ["NewObject", "2", "100201", ""], ["CreateFormforHra", "4", "", ""], ["CreateOrderDropDown"],
    ["CreateActivityDropDown", "100201"], ["updatexml", EDITS[0]], ["updatexml", EDITS[1]],
    ["AddXml", NEW_ORDER],
    ["AddXml", NEW_ACTIVITY], ["AddXml", NEW_LINE], ["AddXml", OWN_HOURS], ["ListHRALines", "Labor", "", ""],
    ["GetDetailsForHRA", "4", "", "", "_3", "", 0], ["ViewHra_W"], ["updatexml", COMPLETED],
    ["completedAgenda"], ["updatexml", CANCELED], ["canceledAgenda"],
    ["SaveHra", NEW_HOURS], ["Get_Error"],
    ["deleteNode", "100202", "10", "10", "Material"], ["deleteNode", "100203", None, None, None],
    ["CompleteOrder"], ["GetMailContent", "Harbrook"],
    # The upload, and what the office says of it.
    ["CreateXMLStringForUpdate"], ["CreateXMLStringForUpdate"], ["DownloadErrors", REPORT],
    ["ShowErrorPool"], ["ShowErrorList"], ["StroreErrorOrders"],
    ["GetDetails", "3", "_1", "_1", "_1", "", 1], ["GetMailContent", "UploadReport"],
    ["deleteCompletedOrders", ""], *LISTS,
    # What goes wrong.
    ["ExplodeZip", "none.exe"], ["MasterData", "NONE"], ["GetDetails", "1", "none", "", "", "", 0],
    ["DownloadErrors", "<UploadReport"], ["Get_Error"], ["GetMailContent", "Log"],
)


def table(path):
    with path.open(encoding="utf-8", newline="") as file:
        head, *rows = csv.reader(file)
    return {"columns": head, "rows": rows}


def text(value):
    return value.read_text(encoding="utf-8") if hasattr(value, "read_text") else value


def load():
    """A day as days.load() gives one, without answers."""
    tables = {path.stem: table(path) for path in sorted((SAMPLES / "masterdata").glob("*.csv"))}
    return {
        "files": {},
        "masterdata": {"name": "tandril", "tables": tables},
        "steps": [{"method": method, "args": [text(a) for a in arguments]}
                  for method, *arguments in CALLS],
    }
