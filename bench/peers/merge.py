#!/usr/bin/python3
"""Merges a download into a store as DownloadXml does, and takes finished orders out.

    merge.py STORE DOWNLOAD MERGED
"""

import sys

from lxml import etree

ORDERS = "ccsocservcordr"
ACTIVITIES = "ccsocservcactv"
COST_SECTIONS = ("ccsocservcmatl", "ccsocservclabr", "ccsocservcothr")
OPEN, COMPLETED, CLOSED = "15", "20", "35"
CLOSING_FIELDS = (21, 22)
UNSENT = {"N", "M"}


def index(elements, key):
    """The elements by their keys; of equal keys the first counts."""
    by_key = {}
    for element in elements:
        by_key.setdefault(key(element), element)
    return by_key


def attributes(*names):
    return lambda element: tuple(element.get(name) for name in names)


def close(known, downloaded):
    """Whether the server closed the order by this."""
    before = [known[field].text for field in CLOSING_FIELDS]
    after = [downloaded[field].text for field in CLOSING_FIELDS]
    if known[0].text == CLOSED and before == after:
        return False
    known[0].text = CLOSED
    for field, text in zip(CLOSING_FIELDS, after):
        known[field].text = text
    return True


def merge_orders(section, downloaded, orders):
    closed_now = set()
    for record in list(downloaded):
        number = record.get("ServiceOrder")
        known = orders.get(number)
        if known is None:
            if record[0].text == OPEN:
                section.append(record)
                orders[number] = record
        elif record[0].text == CLOSED and close(known, record):
            closed_now.add(number)
    return closed_now


def merge_groups(section, downloaded, key, orders, merge_members):
    """Gives each downloaded group of a known order to the store, whole or by merge_members."""
    groups = index(section, key)
    for group in list(downloaded):
        order = orders.get(group.get("ID"))
        if order is None:
            continue
        known = groups.get(key(group))
        if known is not None:
            is_new = merge_members(known, group)
        else:
            section.append(group)
            groups[key(group)] = group
            is_new = len(group) > 0
        if is_new and section.tag == ACTIVITIES and order[0].text == COMPLETED:
            order[0].text = OPEN


def merge_activities(group, downloaded):
    """Whether the group has an activity more than before."""
    known = {activity.get("Activity") for activity in group}
    before = len(known)
    for activity in list(downloaded):
        if activity.get("Activity") not in known:
            known.add(activity.get("Activity"))
            group.append(activity)
    return len(known) > before


def merge_lines(group, downloaded):
    known = index(group, lambda line: line.get("LineNumber"))
    for line in list(downloaded):
        own = known.setdefault(line.get("LineNumber"), line)
        if own is line:
            group.append(line)
            continue
        fields = index(own, lambda field: field.tag)
        for field in line:
            if field.tag in fields:
                fields[field.tag].text = field.text


def with_unsent_work(store):
    orders = {record.get("ServiceOrder") for record in store.find(ORDERS)
              if record.get("State") in UNSENT}
    for section in (ACTIVITIES, *COST_SECTIONS):
        for group in store.find(section):
            if any(member.get("State") in UNSENT for member in group):
                orders.add(group.get("ID"))
    return orders


def purge(store, orders, to_keep):
    """Takes out the orders that are finished, apart from those to keep."""
    with_work = with_unsent_work(store)
    finished = set()
    for number, record in orders.items():
        status = record[0].text
        if status != OPEN and number not in to_keep and (
                status == CLOSED or number not in with_work):
            finished.add(number)
    for section, key in ((ORDERS, "ServiceOrder"), *((s, "ID") for s in (ACTIVITIES, *COST_SECTIONS))):
        parent = store.find(section)
        for element in list(parent):
            if element.get(key) in finished:
                parent.remove(element)


def main():
    store_path, download_path, merged_path = sys.argv[1:]
    parser = etree.XMLParser(remove_blank_text=True, huge_tree=True)
    tree = etree.parse(store_path, parser)
    store, download = tree.getroot(), etree.parse(download_path, parser).getroot()
    orders = index(store.find(ORDERS), lambda record: record.get("ServiceOrder"))

    closed_now = merge_orders(store.find(ORDERS), download.find(ORDERS), orders)
    merge_groups(store.find(ACTIVITIES), download.find(ACTIVITIES), attributes("ID"), orders,
                 merge_activities)
    for section in COST_SECTIONS:
        merge_groups(store.find(section), download.find(section), attributes("ID", "Activity"),
                     orders, merge_lines)
    purge(store, orders, closed_now)
    tree.write(merged_path, encoding="UTF-8")


main()
