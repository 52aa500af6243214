/* The rows of a list as data: what they show and call, how they sort, which of them a filter keeps. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var panel = Tandril.panel;

  var ROW_CALLS = ['showdetails', 'showdetailsforhra', 'FillValues'];

  var SAMPLE = 400; /* rows looked at for the widths of the columns */
  var NARROWEST = 3; /* characters of a column */
  var WIDEST = 32;
  var ALL_WIDTHS = 110; /* characters that a list of few columns shares out among them */

  function mainCall(cells) {
    for (var i = 0; i < cells.length; i++) {
      for (var k = 0; k < cells[i].kids.length; k++) {
        var call = cells[i].kids[k].call;
        if (call && ROW_CALLS.indexOf(call.name) >= 0) { return call; }
      }
    }
    return null;
  }

  /** In a list without its group rows the empty leading cells show the numbers that the groups showed. */
  function leadingText(call, column) {
    return call && call.name === 'showdetails' && column < 2 ? call.args[column + 1] : '';
  }

  /* What a row holds is looked at when it is needed: a long list is shown before all its rows are. */
  function Row(node) {
    this.node = node;
    this.group = node.cls === 'orderrow';
  }

  Row.prototype.look = function () {
    if (this.cells) { return this; }
    this.cells = panel.kidsOf(this.node, 'td');
    this.call = mainCall(this.cells);
    this.texts = this.cells.map(panel.trimmed);
    this.key = this.call ? this.call.args.join('\n') : this.texts.join('\n');
    return this;
  };

  Row.prototype.textAt = function (column) {
    var text = this.look().texts[column] || '';
    return text === '' ? leadingText(this.call, column) : text;
  };

  Row.prototype.holds = function (words) {
    if (this.search === undefined) { this.search = this.look().texts.join(' ').toLowerCase(); }
    var search = this.search;
    return words.every(function (word) { return search.indexOf(word) >= 0; });
  };

  /** Dates compare by year first, numbers by value, everything else as text. */
  function sortKey(text) {
    var date = /^(\d\d)\/(\d\d)\/(\d{4}) ?(\d{4})?$/.exec(text);
    if (date) { return { rank: 1, value: date[3] + date[1] + date[2] + (date[4] || '') }; }
    if (/^-?\d+([.,]\d+)?$/.test(text)) { return { rank: 0, value: Number(text.replace(',', '.')) }; }
    return { rank: text === '' ? 3 : 2, value: text };
  }

  function compareKeys(a, b) {
    if (a.rank !== b.rank) { return a.rank - b.rank; }
    if (a.rank === 2) { return a.value.localeCompare(b.value); }
    return a.value < b.value ? -1 : a.value > b.value ? 1 : 0;
  }

  function sorted(rows, column, descending) {
    var keyed = rows.filter(function (row) { return !row.group; }).map(function (row, index) {
      return { row: row, key: sortKey(row.textAt(column)), index: index };
    });
    keyed.sort(function (a, b) {
      return (descending ? -1 : 1) * compareKeys(a.key, b.key) || a.index - b.index;
    });
    return keyed.map(function (entry) { return entry.row; });
  }

  /** Keeps the rows that hold all words, and the group rows above them; a group that matches keeps its rows. */
  function filtered(rows, words) {
    var kept = [];
    var groups = [];
    var previousWasGroup = false;
    rows.forEach(function (row) {
      if (row.group) {
        groups = previousWasGroup ? groups : [];
        groups.push({ row: row, matches: row.holds(words), shown: false });
      } else if (row.holds(words) || groups.some(function (group) { return group.matches; })) {
        groups.forEach(function (group) {
          if (!group.shown) { kept.push(group.row); }
          group.shown = true;
        });
        kept.push(row);
      }
      previousWasGroup = row.group;
    });
    return kept;
  }

  /**
   * The widths of the columns in characters. They come from the longest texts, so that columns do not jump while rows come
   * into view.
   */
  function widths(rows, head, columns) {
    var widest = Math.max(WIDEST, Math.floor(ALL_WIDTHS / columns));
    var found = [];
    for (var column = 0; column < columns; column++) {
      var longest = (head[column] || '').length;
      for (var i = 0; i < rows.length && i < SAMPLE; i++) {
        if (!rows[i].group) { longest = Math.max(longest, rows[i].textAt(column).length); }
      }
      found.push(Math.min(Math.max(longest, NARROWEST), widest));
    }
    return found;
  }

  Tandril.rows = { SAMPLE: SAMPLE, Row: Row, sorted: sorted, filtered: filtered, leadingText: leadingText, widths: widths };
}(window));
