#!/usr/bin/python3
"""Prints the list that MyActivities returns.

    my_activities.py STORE FIELD_MAPPER
"""

import sys

from lxml import etree

SECTION = "ccsocservcactv"


def show_details(kind, order, activity, text):
    return (f'<span id={order} class=links onclick=javascript:showdetails('
            f'"{kind}","{order}","{activity}","","2")>{text}</span>')


def code_cell(codes):
    return lambda value: f"<td>&nbsp;{codes.get(value, '')}</td>"


def link_cell(field):
    return lambda value: (f'<td align=center>&nbsp;<a href=javascript:hyperlink('
                          f'"{field}","{value}","order")>{value}</a></td>')


def stamp_cell(value):
    if value:
        value = f"{value[4:6]}/{value[6:8]}/{value[0:4]} {value[9:13]}"
    return f"<td align=center>&nbsp;{value}</td>"


def text_cell(value):
    return f"<td align=center>&nbsp;{value}</td>"


def codes_of(mapper, field):
    """The texts of the field's codes; of equal codes the first counts."""
    for element in mapper.iter(field):
        codes = {}
        for entry in element:
            if "Id" in entry.attrib:
                codes.setdefault(entry.get("Id"), entry.get("Value", ""))
        if codes:
            return codes
    return {}


def cells_of(mapper, fields):
    """What makes the cell of each field that is shown, by the field's name."""
    cells = {}
    for field in fields:
        if field.tag in cells:
            continue
        if field.get("DATATYPE") == "e":
            cells[field.tag] = code_cell(codes_of(mapper, field.tag))
        elif field.get("HYPERLINK") == "True":
            cells[field.tag] = link_cell(field.tag)
        elif field.get("DATATYPE") == "u":
            cells[field.tag] = stamp_cell
        else:
            cells[field.tag] = text_cell
    return cells


def header(mapper, columns):
    title = mapper.find(".//I18N/*[@ID='SLBEU0232']").get("DESCRIPTION")
    widths = ("<COL WIDTH=120> <COL WIDTH=120><COL WIDTH=150> <COL WIDTH=150>"
              "<COL WIDTH=120> <COL WIDTH=120> <COL WIDTH=120>")
    names = "".join(f"<td class=tableheader nowrap>{column.get('LABEL')}</td>" for column in columns)
    return ("<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>"
            "<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
            "<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;"
            f"<strong>{title}</strong></td><td valign=bottom align=right>"
            '<input type=submit  onclick=javascript:winclose("divList") value=" x ">'
            "</td></tr></table></td></tr><tr><td width=100%>"
            "<table border=0 cellspacing=2 cellpadding=0 width=100%  height=25>"
            f"{widths}<tr>{names}</tr></table>"
            '<div style="height:125; overflow:auto;">'
            "<table border=0 cellspacing=2 cellpadding=0 width=100%  height=300>"
            f"{widths}")


def rows(store, columns, cells):
    status = {}
    for record in store.iterfind("ccsocservcordr/record"):
        status.setdefault(record.get("ServiceOrder"), record[0].text)
    for group in store.find(SECTION):
        order = group.get("ID")
        if status.get(order) != "15":
            continue
        yield (f"<tr class=orderrow><td colspan={columns}>&nbsp;"
               f"{show_details(1, order, '', order)}</td></tr>")
        for activity in group:
            number = activity.get("Activity")
            yield (f"<tr class=tablerows><td></td><td>&nbsp;"
                   f"{show_details(2, order, number, number)}</td>")
            for field in activity:
                cell = cells.get(field.tag)
                if cell:
                    yield cell(field.text or "")
            yield "</tr>"


def main():
    parser = etree.XMLParser(remove_comments=True, remove_pis=True, huge_tree=True)
    store, mapper = (etree.parse(path, parser).getroot() for path in sys.argv[1:])
    columns = [field for field in mapper.find(SECTION) if field.get("UINTERFACE") in ("1", "3")]
    sys.stdout.reconfigure(encoding="utf-8")
    sys.stdout.write(header(mapper, columns))
    sys.stdout.writelines(rows(store, len(columns), cells_of(mapper, columns)))
    sys.stdout.write("</table></div></td></tr></table>\n")


main()
