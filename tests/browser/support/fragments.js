'use strict';

/* Fragments in the component's own spelling, made of the values that a test gives. */

const quoted = (values) => values.map((value) => `"${value}"`).join(',');

const title = (text, place) => '<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>' +
  '<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;<strong>' + text + '</strong></td>' +
  '<td valign=bottom align=right><input type=submit  onclick=javascript:winclose("' + place + '") value=" x "></td></tr></table></td></tr>';

const columns = '<COL WIDTH=120> <COL WIDTH=120><COL WIDTH=150> <COL WIDTH=150><COL WIDTH=120> <COL WIDTH=120> <COL WIDTH=120>';

const head = (labels) => columns + '<tr>' +
  labels.map((label) => `<td class=tableheader nowrap>${label}</td>`).join('') + '</tr>';

const cell = (value) => `<td align=center>&nbsp;${value}</td>`;

const link = (field, value, form) => `<td align=center>&nbsp;<a href=javascript:hyperlink(${quoted([field, value, form])})>${value}</a></td>`;

const opener = (id, args, text) => `<span id=${id} class=links onclick=javascript:showdetails(${quoted(args)})>${text}</span>`;

/** MyActivities: groups of {order, activities: [{number, cells: [text of cells]}]}. */
function myActivities(panelTitle, labels, groups) {
  const rows = groups.map(({ order, activities }) =>
    `<tr class=orderrow><td colspan=${labels.length}>&nbsp;` + opener(order, ['1', order, '', '', '2'], order) + '</td></tr>' +
    activities.map(({ number, cells }) => '<tr class=tablerows><td></td><td>&nbsp;' +
      opener(order, ['2', order, number, '', '2'], number) + '</td>' + cells.join('') + '</tr>').join('')).join('');
  return '<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>' + title(panelTitle, 'divList') + '<tr><td width=100%>' +
    '<table border=0 cellspacing=2 cellpadding=0 width=100%  height=25>' + head(labels) + '</table>' +
    '<div style="height:125; overflow:auto;"><table border=0 cellspacing=2 cellpadding=0 width=100%  height=300>' + columns +
    rows + '</table></div></td></tr></table>';
}

/** ListOrders: rows of {order, cells}. */
function listOrders(panelTitle, labels, orders) {
  const rows = orders.map(({ order, cells }) => '<tr class=tablerows><td>&nbsp;' +
    opener(order, ['1', order, '', '', '2'], order) + '</td>' + cells.join('') + '</tr>').join('');
  return '<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>' + title(panelTitle, 'divList') + '<tr><td width=100%>' +
    '<div style="height:125; overflow:auto;"><table border=0 cellspacing=1 cellpadding=0 width=100%>' + head(labels) + rows +
    '</div></table></td></tr></table>';
}

const fieldRow = (label, content) => `<tr><td nowrap>&nbsp;${label}</td>${content}</tr>`;
const input = (field, value) => `<td>&nbsp;<input type=text size=10 id=${field} value="${value}"></td>`;
const zoomInput = (field, value, form) => `<td>&nbsp;<input type=text size=10 id=${field} value="${value}">` +
  `<span class=links onclick=javascript:zoom(${quoted([field, form])})><small><strong>...</strong></small></span></td>`;
const area = (field, value) => `<td>&nbsp;<textarea rows=4 cols=30 id=${field}>${value}</textarea></td>`;
const fixed = (field, value) => `<td id=${field}>&nbsp;${value}</td>`;
const plainLink = (field, value) => `<td>&nbsp;<a href=javascript:hyperlink(${quoted([field, value])})>${value}</a></td>`;
const dateInput = (field, date, time) => `<td>&nbsp;<input type=text size=15 id=${field} value=${date}><small><i>mm/dd/yyyy</i></small>` +
  `<input type=text size=4 id=${field}_time value=${time}><small><i>hhmm</i></small></td>`;
const select = (field, options) => `<td>&nbsp;<SELECT name=${field} id=${field}>` +
  options.map(([id, text, chosen]) => `<OPTION value=${id}${chosen ? ' selected>' : ' >'}${text}`).join('') + '</SELECT></td></td>';
const hidden = (field, value) => '<tr style="display:none"><td nowrap>&nbsp;Hidden</td><td>&nbsp;' +
  `<input type=text size=10 id="${field}" value="${value}"></td></tr>`;

/** GetDetails of an activity; `rows` are whole rows of the form. */
function activityDetails(panelTitle, order, activity, rows, label = 'Save') {
  return '<table width=100% border=0 cellspacing=0 cellpadding=0 class=details>' + title(panelTitle, 'divDetails') +
    '<tr><td align=right><table class=hyperbutton><tr class=hyperbutton><td>&nbsp;</td><td align=right>' +
    `<a href=javascript:ListCostLines(${quoted(['Material', order, activity])})>Materials</a></td><td align=right>` +
    `<a href=javascript:newobject(3,${quoted([order, activity])})>New material</a></td></tr></table></td></tr>` +
    `<tr><td width=100%><form name=activity_${order}_${activity}><table width=100% border=0 class=details>` + rows.join('') +
    '</table></form></td></tr><tr><td width=100%><table border=0 cellspacing=0 cellpadding=0 width=100%><tr><td align=right>' +
    `<input id=btnSave type=button value=${label} onclick=javascript:saveObject(${quoted(['activity', order, activity, '', 'Modify'])})></td>` +
    '<td align=right><table><tr><td align=right>' +
    `<input id=btnDelete type=button value=Delete onclick=javascript:deleteObject(${quoted([order, activity, '', ''])})></td>` +
    '</tr></table></td></tr></table></td></tr></table>';
}

/** A zoom window: rows of values, the first being the key. */
function zoomWindow(panelTitle, key, labels, rows) {
  return '<table width=100% border=0 cellspacing=0 cellpadding=0>' + title(panelTitle, 'divZoomHype') + '<tr><td width=100%>' +
    '<table width=100% border=0 cellspacing=0 cellpadding=0 class=details><tr class=tableheader>' +
    labels.map((label) => `<td align=left nowrap>&nbsp;${label}</td>`).join('') + '</tr>' +
    rows.map(([value, ...others]) => `<tr><td nowrap><a href=javascript:FillValues(${quoted([value, key])})>${value}</a></td>` +
      others.map((other) => `<td>${other}</td>`).join('') + '</tr>').join('') + '</table></td></tr></table>';
}

const errorPool = (label, count) => `<a class=cssOption href=javascript:ShowErrors()>*&nbsp${label}(${count})</a>`;

module.exports = {
  title, cell, link, myActivities, listOrders, fieldRow, input, zoomInput, area, fixed, plainLink, dateInput, select, hidden,
  activityDetails, zoomWindow, errorPool
};
