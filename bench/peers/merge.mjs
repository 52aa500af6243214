// Merges a download into a store as DownloadXml does, and takes finished orders out.
//
//   node merge.mjs STORE DOWNLOAD MERGED

import { writeFileSync } from 'node:fs';
import { readTree, xmlOf } from './tree.mjs';

const orderSection = 'ccsocservcordr';
const activitySection = 'ccsocservcactv';
const costSections = ['ccsocservcmatl', 'ccsocservclabr', 'ccsocservcothr'];
const [open, completed, closed] = ['15', '20', '35'];
const closingFields = [21, 22];
const unsent = new Set(['N', 'M']);

const sectionOf = (document, name) => document.children.find((section) => section.name === name);
const statusOf = (record) => record.children[0].text;
const orderNumber = ({ attributes }) => attributes.ServiceOrder;
const groupOrder = ({ attributes }) => attributes.ID;
const groupKey = ({ attributes }) => `${attributes.ID}\n${attributes.Activity}`;
const activityNumber = ({ attributes }) => attributes.Activity;
const lineNumber = ({ attributes }) => attributes.LineNumber;

// The elements by their keys; of equal keys the first counts.
function index(elements, keyOf) {
    const byKey = new Map();
    for (const element of elements) {
        const key = keyOf(element);
        if (!byKey.has(key)) {
            byKey.set(key, element);
        }
    }
    return byKey;
}

// Returns whether the server closed the order by this.
function close(known, downloaded) {
    const before = closingFields.map((field) => known.children[field].text);
    const after = closingFields.map((field) => downloaded.children[field].text);
    if (statusOf(known) === closed && before.join('\n') === after.join('\n')) {
        return false;
    }
    known.children[0].text = closed;
    closingFields.forEach((field, i) => { known.children[field].text = after[i]; });
    return true;
}

function mergeOrders(section, downloaded, orders) {
    const closedNow = new Set();
    for (const record of downloaded.children) {
        const number = orderNumber(record);
        const known = orders.get(number);
        if (known === undefined) {
            if (statusOf(record) === open) {
                section.children.push(record);
                orders.set(number, record);
            }
        } else if (statusOf(record) === closed && close(known, record)) {
            closedNow.add(number);
        }
    }
    return closedNow;
}

// Gives each downloaded group of a known order to the store, whole or by `mergeMembers`.
function mergeGroups(section, downloaded, keyOf, orders, mergeMembers) {
    const groups = index(section.children, keyOf);
    for (const group of downloaded.children) {
        const order = orders.get(groupOrder(group));
        if (order === undefined) {
            continue;
        }
        const known = groups.get(keyOf(group)) ?? { ...group, children: [] };
        if (!groups.has(keyOf(group))) {
            groups.set(keyOf(group), known);
            section.children.push(known);
        }
        mergeMembers(known, group, order);
    }
}

function mergeActivities(group, downloaded, order) {
    const known = index(group.children, activityNumber);
    for (const activity of downloaded.children) {
        if (!known.has(activityNumber(activity))) {
            known.set(activityNumber(activity), activity);
            group.children.push(activity);
            if (statusOf(order) === completed) {
                order.children[0].text = open;
            }
        }
    }
}

function mergeLines(group, downloaded) {
    const known = index(group.children, lineNumber);
    for (const line of downloaded.children) {
        const own = known.get(lineNumber(line));
        if (own === undefined) {
            known.set(lineNumber(line), line);
            group.children.push(line);
            continue;
        }
        const fields = index(own.children, ({ name }) => name);
        for (const { name, text } of line.children) {
            if (fields.has(name)) {
                fields.get(name).text = text;
            }
        }
    }
}

function withUnsentWork(store) {
    const isUnsent = ({ attributes }) => unsent.has(attributes.State);
    const orders = new Set(sectionOf(store, orderSection).children.filter(isUnsent).map(orderNumber));
    for (const name of [activitySection, ...costSections]) {
        for (const group of sectionOf(store, name).children) {
            if (group.children.some(isUnsent)) {
                orders.add(groupOrder(group));
            }
        }
    }
    return orders;
}

// Takes out the orders that are finished, apart from those to keep.
function purge(store, orders, toKeep) {
    const withWork = withUnsentWork(store);
    const finished = new Set();
    for (const [number, record] of orders) {
        const status = statusOf(record);
        if (status !== open && !toKeep.has(number) && (status === closed || !withWork.has(number))) {
            finished.add(number);
        }
    }
    const keep = (name, numberOf) => {
        const section = sectionOf(store, name);
        section.children = section.children.filter((element) => !finished.has(numberOf(element)));
    };
    keep(orderSection, orderNumber);
    for (const name of [activitySection, ...costSections]) {
        keep(name, groupOrder);
    }
}

async function main([storePath, downloadPath, mergedPath]) {
    const store = await readTree(storePath);
    const download = await readTree(downloadPath);
    const sections = (name) => [sectionOf(store, name), sectionOf(download, name)];
    const orders = index(sectionOf(store, orderSection).children, orderNumber);

    const closedNow = mergeOrders(...sections(orderSection), orders);
    mergeGroups(...sections(activitySection), groupOrder, orders, mergeActivities);
    for (const name of costSections) {
        mergeGroups(...sections(name), groupKey, orders, mergeLines);
    }
    purge(store, orders, closedNow);
    writeFileSync(mergedPath, xmlOf(store));
}

await main(process.argv.slice(2));
