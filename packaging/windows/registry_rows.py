"""What the installer writes into the registry, which is what regsvr32 writes for both DLLs, the
settings, and the data source.
"""

import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]

DATA_FOLDER = "C:\\Vorn Tandril\\"
SETTINGS = "SOFTWARE\\Vorn\\Vorn Tandril"
DATA_SOURCE = "SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data"
CLASSES = "SOFTWARE\\Classes\\"
# The value name that asks for a key alone, which stays when the product goes.
KEY_ALONE = "+"


def identifiers():
    """The GUIDs of the library, the interface and the class, in the order of their description."""
    text = (ROOT / "src/surface/com/tandril.idl").read_text(encoding="utf-8")
    return ["{" + guid.upper() + "}" for guid in re.findall(r"\buuid\(([0-9A-Fa-f-]{36})\)", text)]


def names():
    """What the class and what describes it are called."""
    text = (ROOT / "src/surface/com/names.h").read_text(encoding="utf-8")
    return dict(re.findall(r'(\w+)\[\] = L"([^"]*)"', text))


def class_rows(library, class_id, file, known):
    key = f"{CLASSES}CLSID\\{class_id}"
    return [
        (key, "", known["classTitle"]),
        (key + "\\InprocServer32", "", f"[#{file}]"),
        (key + "\\InprocServer32", "ThreadingModel", "Apartment"),
        (key + "\\ProgID", "", known["versionedProgramId"]),
        (key + "\\VersionIndependentProgID", "", known["programId"]),
        (key + "\\TypeLib", "", library),
        (key + "\\Version", "", "1.0"),
        (key + "\\Programmable", "", ""),
    ]


def name_rows(class_id, known):
    rows = []
    for name in (known["programId"], known["versionedProgramId"]):
        rows += [(CLASSES + name, "", known["classTitle"]),
                 (CLASSES + name + "\\CLSID", "", class_id)]
    return rows + [(CLASSES + known["programId"] + "\\CurVer", "", known["versionedProgramId"])]


def library_rows(library, known):
    key = f"{CLASSES}TypeLib\\{library}\\1.0"
    return [
        (key, "", known["typeLibraryTitle"]),
        (key + "\\FLAGS", "", "0"),
        (key + "\\HELPDIR", "", "[INSTALLDIR]x64"),
    ]


def interface_rows(library, interface, known):
    key = f"{CLASSES}Interface\\{interface}"
    return [
        (key, "", known["interfaceName"]),
        (key + "\\ProxyStubClsid32", "", known["automationProxy"]),
        (key + "\\TypeLib", "", library),
        (key + "\\TypeLib", "Version", "1.0"),
    ]


def data_source_rows():
    """What Initialize would write, had a user the right to."""
    engine = DATA_SOURCE + "\\Engines\\Jet"
    return [
        (DATA_SOURCE, "DBQ", DATA_FOLDER + "MasterData\\"),
        (DATA_SOURCE, "Description", "Master Data"),
        (DATA_SOURCE, "Driver", "[System64Folder]odbcjt32.dll"),
        (DATA_SOURCE, "DriverId", "#19"),
        (DATA_SOURCE, "FIL", "MS Access"),
        (DATA_SOURCE, "SafeTransactions", "#0"),
        (DATA_SOURCE, "UID", ""),
        (engine, "ImplicitCommitSync", "Yes"),
        (engine, "MaxBufferSize", "#2048"),
        (engine, "PageTimeOut", "#5"),
        (engine, "Threads", "#3"),
        (engine, "UserCommitSync", "Yes"),
        ("SOFTWARE\\ODBC\\odbc.ini\\ODBC Data Sources", "Tandril Master Data",
         "Microsoft Access Driver (*.mdb)"),
    ]


def registry_rows():
    """(component, key, name, value) of all rows. A component writes into the view of its bitness."""
    library, interface, class_id = identifiers()
    known = names()
    rows = []
    for component, platform in (("x64", "win64"), ("x86", "win32")):
        own = class_rows(library, class_id, component, known) + interface_rows(library, interface, known)
        own += [(f"{CLASSES}TypeLib\\{library}\\1.0\\0\\{platform}", "", f"[#{component}]")]
        own += [(SETTINGS, KEY_ALONE, "")] + data_source_rows()
        rows += [(component, *row) for row in own]
    # Both views show these.
    shared = library_rows(library, known) + name_rows(class_id, known)
    return rows + [("x64", *row) for row in shared]
