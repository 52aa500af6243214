// Prints the list that MyActivities returns.
//
//   node my_activities.mjs STORE FIELD_MAPPER

import { createReadStream } from 'node:fs';
import { SaxesParser } from 'saxes';
import { readTree } from './tree.mjs';

const section = 'ccsocservcactv';
const widths = '<COL WIDTH=120> <COL WIDTH=120><COL WIDTH=150> <COL WIDTH=150>'
    + '<COL WIDTH=120> <COL WIDTH=120> <COL WIDTH=120>';

function* named(name, element) {
    if (element.name === name) {
        yield element;
    }
    for (const child of element.children) {
        yield* named(name, child);
    }
}

// A map in which of equal keys the first counts.
function firstOfEach(pairs) {
    const map = new Map();
    for (const [key, value] of pairs) {
        if (!map.has(key)) {
            map.set(key, value);
        }
    }
    return map;
}

function codesOf(mapper, field) {
    for (const { children } of named(field, mapper)) {
        const entries = children.filter(({ attributes }) => 'Id' in attributes);
        if (entries.length > 0) {
            return firstOfEach(entries.map(({ attributes }) => [attributes.Id, attributes.Value ?? '']));
        }
    }
    return new Map();
}

// What makes the cell of a field from its value.
function cellOf(mapper, { name, attributes }) {
    if (attributes.DATATYPE === 'e') {
        const codes = codesOf(mapper, name);
        return (value) => `<td>&nbsp;${codes.get(value) ?? ''}</td>`;
    }
    if (attributes.HYPERLINK === 'True') {
        return (value) => `<td align=center>&nbsp;<a href=javascript:hyperlink("${name}","${value}","order")>${value}</a></td>`;
    }
    if (attributes.DATATYPE === 'u') {
        return (value) => `<td align=center>&nbsp;${value && stamp(value)}</td>`;
    }
    return (value) => `<td align=center>&nbsp;${value}</td>`;
}

function stamp(value) {
    return `${value.slice(4, 6)}/${value.slice(6, 8)}/${value.slice(0, 4)} ${value.slice(9, 13)}`;
}

function header(mapper, columns) {
    const texts = named('I18N', mapper).next().value.children;
    const title = texts.find(({ attributes }) => attributes.ID === 'SLBEU0232').attributes.DESCRIPTION;
    const names = columns.map(({ attributes }) => `<td class=tableheader nowrap>${attributes.LABEL}</td>`);
    return '<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>'
        + '<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>'
        + '<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;'
        + `<strong>${title}</strong></td><td valign=bottom align=right>`
        + '<input type=submit  onclick=javascript:winclose("divList") value=" x ">'
        + '</td></tr></table></td></tr><tr><td width=100%>'
        + '<table border=0 cellspacing=2 cellpadding=0 width=100%  height=25>'
        + `${widths}<tr>${names.join('')}</tr></table>`
        + '<div style="height:125; overflow:auto;">'
        + '<table border=0 cellspacing=2 cellpadding=0 width=100%  height=300>'
        + widths;
}

function link(kind, order, activity, text) {
    return `<span id=${order} class=links onclick=javascript:showdetails("${kind}","${order}","${activity}","","2")>${text}</span>`;
}

// Reads the store as a stream, in which the orders stand before their activities, and writes the
// rows of the list.
async function writeRows(path, columns, cells, write) {
    const open = new Map();
    const parser = new SaxesParser();
    let depth = 0;  // 1: the document, 2: a section, 3: an order or group, 4: a field or activity, ...
    let inside = '';
    let order = '';
    let isFirstField = false;
    let cell;
    let text = '';

    parser.on('opentag', ({ name, attributes }) => {
        ++depth;
        text = '';
        if (depth === 2) {
            inside = name;
        } else if (inside === 'ccsocservcordr') {
            if (depth === 3) {
                order = attributes.ServiceOrder;
                isFirstField = true;
            }
        } else if (inside === section) {
            if (depth === 3) {
                order = open.get(attributes.ID) ? attributes.ID : '';
                if (order) {
                    write(`<tr class=orderrow><td colspan=${columns}>&nbsp;${link(1, order, '', order)}</td></tr>`);
                }
            } else if (order && depth === 4) {
                write(`<tr class=tablerows><td></td><td>&nbsp;${link(2, order, attributes.Activity, attributes.Activity)}</td>`);
            } else if (order && depth === 5) {
                cell = cells.get(name);
            }
        }
    });
    parser.on('text', (part) => { text += part; });
    parser.on('cdata', (part) => { text += part; });
    parser.on('closetag', () => {
        if (inside === section) {
            if (order && depth === 5 && cell) {
                write(cell(text));
            } else if (order && depth === 4) {
                write('</tr>');
            }
        } else if (inside === 'ccsocservcordr' && depth === 4 && isFirstField) {
            isFirstField = false;
            if (!open.has(order)) {
                open.set(order, text === '15');
            }
        }
        --depth;
    });
    for await (const chunk of createReadStream(path, { encoding: 'utf8', highWaterMark: 1 << 20 })) {
        parser.write(chunk);
    }
    parser.close();
}

async function main([storePath, mapperPath]) {
    const mapper = await readTree(mapperPath);
    const columns = named(section, mapper).next().value.children
        .filter(({ attributes }) => ['1', '3'].includes(attributes.UINTERFACE));
    const cells = firstOfEach(columns.map((column) => [column.name, cellOf(mapper, column)]));
    let out = header(mapper, columns);
    await writeRows(storePath, columns.length, cells, (html) => {
        out += html;
        if (out.length > 1 << 20) {
            process.stdout.write(out);
            out = '';
        }
    });
    process.stdout.write(`${out}</table></div></td></tr></table>\n`);
}

await main(process.argv.slice(2));
