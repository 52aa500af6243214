// XML documents as trees of plain objects.

import { createReadStream } from 'node:fs';
import { SaxesParser } from 'saxes';

// An element has its name, attributes, element children and, when it has none, text. Blank text
// between elements, comments and instructions are left out.
export async function readTree(path) {
    const parser = new SaxesParser();
    const top = { children: [] };
    const open = [top];
    let text = '';
    const addText = (part) => { text += part; };
    parser.on('opentag', ({ name, attributes }) => {
        const element = { name, attributes, children: [], text: '' };
        open.at(-1).children.push(element);
        open.push(element);
        text = '';
    });
    parser.on('text', addText);
    parser.on('cdata', addText);
    parser.on('closetag', () => {
        const element = open.pop();
        if (element.children.length === 0) {
            element.text = text;
        }
    });
    for await (const chunk of createReadStream(path, { encoding: 'utf8', highWaterMark: 1 << 20 })) {
        parser.write(chunk);
    }
    parser.close();
    return top.children[0];
}

const references = { '&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;', '\t': '&#9;', '\n': '&#10;', '\r': '&#13;' };

function escaped(value, special) {
    return special.test(value) ? value.replace(new RegExp(special, 'g'), (c) => references[c]) : value;
}

function attributes(element) {
    let text = '';
    for (const name in element.attributes) {
        text += ` ${name}="${escaped(element.attributes[name], /[&<>"\t\n\r]/)}"`;
    }
    return text;
}

// The element as XML.
export function xmlOf(element) {
    const start = `<${element.name}${attributes(element)}`;
    const content = element.children.length > 0
        ? element.children.map(xmlOf).join('')
        : escaped(element.text, /[&<>\r]/);
    return content === '' ? `${start}/>` : `${start}>${content}</${element.name}>`;
}
