/*
 * Says what a fragment's tree shows, without its tables: a title, a list, a form, facts, links and buttons. The tables
 * of a fragment are there for looks; render.js gives what they hold a shape of its own.
 *
 * A panel: { title, place, minimize, list: {head: [text], rows: [row node]} or null, form: {name, rows: [row node]} or
 * null, facts: [[cell node, cell node]], links: [[anchor node]], buttons: [input node], notes: [text] }
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  function textOf(node) {
    if (typeof node === 'string') { return node; }
    return node.kids.map(textOf).join('');
  }

  /** The text without the blanks around it that the fragments use as margins. */
  function trimmed(node) {
    return textOf(node).replace(/^[\s\u00a0]+|[\s\u00a0]+$/g, '');
  }

  function kidsOf(node, tag) {
    return node.kids.filter(function (kid) { return kid.tag === tag; });
  }

  function isHeadRow(row) {
    var cells = kidsOf(row, 'td');
    return row.cls === 'tableheader' || cells.length > 0 && cells.every(function (cell) { return cell.cls === 'tableheader'; });
  }

  function takeTitle(panel, row) {
    kidsOf(row, 'td').forEach(function (cell) {
      cell.kids.forEach(function (kid) {
        if (kid.tag === 'strong') { panel.title = trimmed(kid); }
        if (!kid.call) { return; }
        panel.place = kid.call.args[0];
        if (kid.call.name === 'minimize') { panel.minimize = true; }
      });
    });
  }

  function listOf(panel) {
    panel.list = panel.list || { head: [], rows: [] };
    return panel.list;
  }

  /** A cell that holds tables, forms and the like: true when there was something inside to look at. */
  function takeInner(panel, cell) {
    var inner = cell.kids.filter(function (kid) { return ['table', 'div', 'form'].indexOf(kid.tag) >= 0; });
    inner.forEach(function (kid) { take(panel, kid); });
    return inner.length > 0;
  }

  function takePlainRow(panel, row) {
    var cells = kidsOf(row, 'td');
    var anchors = [];
    var seen = false;
    cells.forEach(function (cell) {
      seen = takeInner(panel, cell) || seen;
      kidsOf(cell, 'a').forEach(function (anchor) { anchors.push(anchor); });
      kidsOf(cell, 'input').forEach(function (input) { panel.buttons.push(input); });
      seen = seen || kidsOf(cell, 'input').length > 0;
    });
    if (anchors.length) { panel.links.push(anchors); }
    if (seen || anchors.length || !trimmed(row) && !cells.some(function (cell) { return kidsOf(cell, 'select').length; })) { return; }
    if (cells.length === 2) { panel.facts.push(cells); } else { panel.notes.push(trimmed(row)); }
  }

  /* The message and the button of an empty list of cost lines stand in a row of the list's class. */
  function isNoteRow(row) {
    var cells = kidsOf(row, 'td');
    return cells.length === 1 && cells[0].colspan === 0;
  }

  function takeRow(panel, row, listed, table) {
    if (row.cls === 'titles') {
      takeTitle(panel, row);
    } else if (isHeadRow(row)) {
      listOf(panel).head = kidsOf(row, 'td').map(trimmed);
    } else if ((row.cls === 'tablerows' || row.cls === 'orderrow') && isNoteRow(row)) {
      kidsOf(row.kids[0], 'input').forEach(function (input) { panel.buttons.push(input); });
      panel.notes.push(trimmed(row));
    } else if (row.cls === 'tablerows' || row.cls === 'orderrow' || listed) {
      listOf(panel).rows.push(row);
      panel.list.table = table;
    } else {
      takePlainRow(panel, row);
    }
  }

  function takeForm(panel, form) {
    panel.form = { name: form.name, rows: [] };
    form.kids.forEach(function (table) {
      if (table.tag === 'table') { panel.form.rows = panel.form.rows.concat(kidsOf(table, 'tr')); }
    });
  }

  function take(panel, node) {
    if (node.tag === 'form') {
      takeForm(panel, node);
    } else if (node.tag === 'table' || node.tag === 'div' || node.tag === 'root') {
      var rows = kidsOf(node, 'tr');
      var listed = rows.some(function (row) { return row.cls === 'tableheader'; });
      rows.forEach(function (row) { takeRow(panel, row, listed, node); });
      node.kids.forEach(function (kid) {
        if (kid.tag === 'table' || kid.tag === 'form') { take(panel, kid); }
        if (typeof kid === 'string' && kid.trim()) { panel.notes.push(kid.trim()); }
      });
    }
  }

  function describe(root) {
    var panel = { title: '', place: '', minimize: false, list: null, form: null, facts: [], links: [], buttons: [], notes: [] };
    take(panel, root);
    return panel;
  }

  function within(milliseconds) {
    var end = Date.now() + milliseconds;
    return function () { return Date.now() < end; };
  }

  /**
   * The rest of a list whose first rows are shown: more(milliseconds) reads on and gives { rows, isLast }. The row that
   * the reader is in is not handed out before it is complete.
   */
  function restOf(reader, list) {
    var kids = list.table.kids;
    var taken = kids.length - 1;
    return function (milliseconds) {
      var isLast = reader.run(within(milliseconds));
      var end = isLast ? kids.length : kids.length - 1;
      var rows = kids.slice(taken, end).filter(function (kid) { return kid.tag === 'tr'; });
      taken = Math.max(taken, end);
      return { rows: rows, isLast: isLast };
    };
  }

  /** The value that a node shows for a field: of an input, a cell or a link; undefined when it is of another field. */
  function valueIn(node, field) {
    if (node.field === field) { return node.value === undefined ? trimmed(node) : node.value; }
    if (node.call && node.call.name === 'hyperlink' && node.call.args[0] === field) { return node.call.args[1]; }
    var found;
    (node.kids || []).some(function (kid) {
      found = typeof kid === 'string' ? undefined : valueIn(kid, field);
      return found !== undefined;
    });
    return found;
  }

  Tandril.panel = {
    textOf: textOf,
    trimmed: trimmed,
    kidsOf: kidsOf,

    /** What the fragment `text` shows. */
    read: function (text) {
      return describe(Tandril.fragment.read(text));
    },

    /**
     * What the fragment shows as far as it is read within a time; when that is a part of a list, panel.more reads on.
     * Anything but a list is read whole. For the keys see fragment.js.
     */
    begin: function (text, milliseconds, keys) {
      var reader = new Tandril.fragment.Reader(text, keys);
      if (reader.run(within(milliseconds))) { return describe(reader.root); }
      var panel = describe(reader.root);
      if (!panel.list || !panel.list.rows.length || panel.form) {
        reader.run();
        return describe(reader.root);
      }
      panel.list.rows.pop();
      panel.more = restOf(reader, panel.list);
      return panel;
    },

    /** The value of a field in a panel's form, "" when the form has no such field. */
    valueOf: function (panel, field) {
      return panel.form && valueIn({ kids: panel.form.rows }, field) || '';
    },

    /** The options of a fragment that fills a drop-down: [{value, text}]. */
    readOptions: function (text) {
      return kidsOf(Tandril.fragment.read(text), 'option').map(function (option) {
        return { value: option.value, text: trimmed(option) };
      });
    }
  };
}(typeof window === 'undefined' ? global : window));
