/*
 * Shows the rows of a fragment's list as one table: filter, sort by column, keyboard, and for long lists only the rows
 * in view. The table keeps the classes of the fragment's rows.
 *
 * The state that outlives a new call of the same view: { filter, column, descending, scroll, current }.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var panel = Tandril.panel;
  var rows = Tandril.rows;

  var ALL_AT_ONCE = 250; /* rows; a longer list builds the rows in view only */
  var MARGIN = 12; /* rows built above and below the view */

  /* Pixels of a row, which the style sheet makes higher for fingers. */
  function rowHeight() {
    return parseFloat(root.getComputedStyle(document.documentElement).getPropertyValue('--row')) || 40;
  }

  /* ---- the table ---- */

  function List(source, options) {
    this.head = source.head;
    this.rows = [];
    this.addRows(source.rows);
    this.state = options.state;
    this.run = options.run;
    this.label = options.label;
    this.shown = [];
    this.rowHeight = rowHeight();
    this.growing = options.growing;
    this.active = 0;
    this.columns = this.rows.slice(0, rows.SAMPLE).reduce(function (count, row) {
      return row.group ? count : Math.max(count, row.look().cells.length);
    }, this.head.length);
    this.build();
    this.update();
  }

  List.prototype.addRows = function (nodes) {
    for (var i = 0; i < nodes.length; i++) { this.rows.push(new rows.Row(nodes[i])); }
  };

  /**
   * Adds rows that were read later. The rows in view stay the elements that they are; a list that is filtered or sorted
   * takes the new ones in once `isLast` says so.
   */
  List.prototype.grow = function (nodes, isLast) {
    var isPlain = this.shown === this.rows;
    var wasSample = this.rows.length < rows.SAMPLE;
    this.addRows(nodes);
    if (wasSample) { this.setWidths(); }
    if (isPlain) {
      this.stretch();
    } else if (isLast) {
      this.update();
    }
    this.growing = !isLast;
    if (isLast) {
      this.restore();
      this.findActiveAgain();
      if (this.onwhole) { this.onwhole(); }
    }
    if (this.onchange) { this.onchange(); }
  };

  /** Calls act once all rows are here. */
  List.prototype.whenWhole = function (act) {
    if (this.growing) { this.onwhole = act; } else { act(); }
  };

  List.prototype.build = function () {
    var self = this;
    this.headRow = dom.make('tr', {}, []);
    this.body = dom.make('tbody', {
      onclick: function (event) { self.click(event); },
      onkeydown: function (event) { self.press(event); },
      onfocusin: function (event) { self.focused(event); }
    });
    this.table = dom.make('table', { 'class': 'rows', 'aria-label': this.label }, [
      this.makeColumns(), dom.make('thead', {}, this.headRow), this.body
    ]);
    this.scroller = dom.make('div', { 'class': 'scroll', onscroll: function () { self.scrolled(); } }, this.table);
    for (var column = 0; column < this.columns; column++) { this.headRow.appendChild(this.makeHead(column)); }
    this.element = this.scroller;
  };

  List.prototype.makeColumns = function () {
    this.group = dom.make('colgroup');
    for (var column = 0; column < this.columns; column++) { this.group.appendChild(dom.make('col')); }
    this.setWidths();
    return this.group;
  };

  List.prototype.setWidths = function () {
    var group = this.group;
    rows.widths(this.rows, this.head, this.columns).forEach(function (width, column) {
      group.children[column].style.width = 'calc(' + width + 'ch + 26px)';
    });
  };

  List.prototype.makeHead = function (column) {
    var self = this;
    var text = this.head[column] || '';
    var cell = dom.make('th', { 'class': 'tableheader', scope: 'col' });
    if (text === '') { return cell; }
    dom.append(cell, dom.make('button', {
      type: 'button', title: Tandril.text('sortBy', text), onclick: function () { self.sortBy(column); }
    }, [text, Tandril.icon('up')]));
    return cell;
  };

  List.prototype.sortBy = function (column) {
    if (this.state.column !== column) {
      this.state.column = column;
      this.state.descending = false;
    } else if (!this.state.descending) {
      this.state.descending = true;
    } else {
      this.state.column = undefined;
    }
    this.update();
  };

  List.prototype.filter = function (text) {
    this.state.filter = text;
    this.scroller.scrollTop = 0;
    this.update();
  };

  /** Number of the rows that are records, all and those shown. */
  List.prototype.counts = function () {
    function count(list) {
      return list.reduce(function (sum, row) { return row.group ? sum : sum + 1; }, 0);
    }
    var all = count(this.rows);
    return { all: all, shown: this.shown === this.rows ? all : count(this.shown) };
  };

  List.prototype.update = function () {
    var words = (this.state.filter || '').toLowerCase().split(/\s+/).filter(Boolean);
    this.shown = words.length ? rows.filtered(this.rows, words) : this.rows;
    if (this.state.column !== undefined) { this.shown = rows.sorted(this.shown, this.state.column, this.state.descending); }
    this.findActive();
    this.markSorting();
    this.painted = -1;
    this.paint();
    if (this.onchange) { this.onchange(); }
  };

  /* The row that the keyboard is on: the one that was opened last or, when that is gone, the one in its place. */
  List.prototype.findActive = function () {
    var current = this.indexOf(this.state.current);
    this.active = current >= 0 ? current : Math.max(0, Math.min(this.state.active || 0, this.shown.length - 1));
  };

  /* The row that the keyboard is on may be among those that came late; but where the user has gone meanwhile he stays. */
  List.prototype.findActiveAgain = function () {
    var before = this.active;
    if (before !== 0 && before === this.state.active) { return; }
    this.findActive();
    var found = this.active;
    this.active = before;
    if (found !== before) { this.setActive(found); }
    var isFree = document.activeElement === document.body || this.body.contains(document.activeElement);
    if (this.wantsFocus && isFree) { this.focusActive(); }
  };

  List.prototype.indexOf = function (key) {
    for (var i = 0; key !== undefined && i < this.shown.length; i++) {
      if (this.shown[i].look().key === key) { return i; }
    }
    return -1;
  };

  List.prototype.markSorting = function () {
    var self = this;
    dom.each(this.headRow.children, function (cell, column) {
      var isSorted = self.state.column === column;
      cell.setAttribute('aria-sort', isSorted ? (self.state.descending ? 'descending' : 'ascending') : 'none');
    });
  };

  /* ---- rows in view ---- */

  List.prototype.range = function () {
    var count = this.shown.length;
    if (count <= ALL_AT_ONCE || this.whole) { return { first: 0, end: count }; }
    var first = Math.max(0, Math.floor(this.scroller.scrollTop / this.rowHeight) - MARGIN);
    var visible = Math.ceil((this.scroller.clientHeight || 800) / this.rowHeight) + 2 * MARGIN;
    return { first: first - first % 4, end: Math.min(count, first + visible) };
  };

  List.prototype.paint = function () {
    var range = this.range();
    if (range.first === this.first && range.end === this.end && this.painted === this.shown.length) { return; }
    this.painted = this.shown.length;
    this.first = range.first;
    this.end = range.end;
    var hadFocus = this.body.contains(document.activeElement);
    dom.empty(this.body);
    this.table.setAttribute('aria-rowcount', this.shown.length + 1);
    this.addGap(range.first);
    for (var i = range.first; i < range.end; i++) { this.body.appendChild(this.makeRow(this.shown[i], i)); }
    this.addGap(this.shown.length - range.end);
    if (hadFocus) { this.focusActive(); }
  };

  List.prototype.addGap = function (count) {
    if (count <= 0) { return; }
    var cell = dom.make('td', { colspan: this.columns });
    cell.style.height = count * this.rowHeight + 'px';
    this.body.appendChild(dom.make('tr', { 'class': 'gap', 'aria-hidden': 'true' }, cell));
  };

  /** Makes room below the rows in view for rows that were added behind them. */
  List.prototype.stretch = function () {
    var range = this.range();
    if (range.first !== this.first || range.end !== this.end) {
      this.paint();
      return;
    }
    var last = this.body.lastChild;
    if (range.end > 0 && last && last.classList.contains('gap')) { this.body.removeChild(last); }
    this.addGap(this.shown.length - range.end);
    this.painted = this.shown.length;
    this.table.setAttribute('aria-rowcount', this.shown.length + 1);
  };

  List.prototype.scrolled = function () {
    var self = this;
    if (!this.isShort()) { this.state.scroll = this.scroller.scrollTop; }
    if (this.waiting) { return; }
    this.waiting = true;
    root.requestAnimationFrame(function () {
      self.waiting = false;
      self.paint();
    });
  };

  /* While rows are missing, the end of the list stops it from standing where it should; that is no wish of the user. */
  List.prototype.isShort = function () {
    var end = this.scroller.scrollHeight - this.scroller.clientHeight;
    return this.growing && this.scroller.scrollTop < this.state.scroll && this.scroller.scrollTop >= end - 1;
  };

  /** Takes up the position that the state keeps, once the list stands in the document. */
  List.prototype.restore = function () {
    if (this.state.scroll) {
      this.scroller.scrollTop = this.state.scroll;
      this.paint();
    }
  };

  /** Builds every row, for the printer. */
  List.prototype.showWhole = function (whole) {
    this.whole = whole;
    this.paint();
  };

  List.prototype.makeRow = function (row, index) {
    var self = this;
    row.look();
    var element = dom.make('tr', {
      'class': (row.node.cls || 'tablerows') + (row.call ? ' opens' : ''), 'data-index': index, 'aria-rowindex': index + 2,
      tabindex: row.call ? (index === this.active ? 0 : -1) : null,
      'aria-current': row.key === this.state.current && row.call ? 'true' : null
    });
    var last = row.cells.length - 1;
    row.cells.forEach(function (cell, column) {
      element.appendChild(self.makeCell(row, cell, column, row.group && column === last ? self.columns - last : 1));
    });
    for (var column = last + 1; !row.group && column < this.columns; column++) { element.appendChild(dom.make('td')); }
    return element;
  };

  List.prototype.makeCell = function (row, cell, column, span) {
    var self = this;
    var element = dom.make('td', { colspan: span > 1 ? span : null });
    if (row.texts[column] === '' && !row.group && this.state.column !== undefined) {
      return dom.append(element, dom.make('span', { 'class': 'faint' }, rows.leadingText(row.call, column)));
    }
    if (row.texts[column].length > 24) { element.title = row.texts[column]; }
    cell.kids.forEach(function (kid, place) {
      if (typeof kid === 'string') {
        dom.append(element, place ? kid : kid.replace(/^[\s\u00a0]+/, ''));
      } else if (kid.call) {
        element.appendChild(self.makeLink(kid, kid.call === row.call));
      }
    });
    return element;
  };

  List.prototype.makeLink = function (node, isMain) {
    var text = panel.textOf(node);
    if (isMain) { return dom.make('span', { 'class': 'links' }, text); }
    if (text === '') { return document.createTextNode(''); }
    var run = this.run;
    return dom.make('button', {
      type: 'button', 'class': 'link', tabindex: -1,
      onclick: function (event) {
        event.stopPropagation();
        run(node.call, event);
      }
    }, text);
  };

  /* ---- acting on rows ---- */

  List.prototype.rowOf = function (target) {
    var element = dom.around(target, 'opens', this.body);
    return element ? this.shown[Number(element.getAttribute('data-index'))] : null;
  };

  List.prototype.open = function (row, event) {
    this.setActive(this.shown.indexOf(row));
    this.state.current = row.key;
    dom.each(this.body.querySelectorAll('[aria-current]'), function (element) { element.removeAttribute('aria-current'); });
    var element = this.elementAt(this.active);
    if (element) { element.setAttribute('aria-current', 'true'); }
    this.run(row.call, event);
  };

  List.prototype.click = function (event) {
    var row = this.rowOf(event.target);
    if (row && !String(root.getSelection && root.getSelection())) { this.open(row, event); }
  };

  List.prototype.elementAt = function (index) {
    return this.body.querySelector('tr[data-index="' + index + '"]');
  };

  List.prototype.setActive = function (index) {
    var before = this.elementAt(this.active);
    if (before && before.hasAttribute('tabindex')) { before.setAttribute('tabindex', '-1'); }
    this.active = this.state.active = index;
    var now = this.elementAt(index);
    if (now && now.hasAttribute('tabindex')) { now.setAttribute('tabindex', '0'); }
  };

  List.prototype.focusActive = function () {
    var element = this.elementAt(this.active);
    this.isOwnFocus = true; /* which is no move of the user's */
    if (element) { element.focus(); }
    this.isOwnFocus = false;
  };

  /** Gives the focus to the row that the keyboard is on, also when that one has yet to come. */
  List.prototype.takeFocus = function () {
    this.wantsFocus = true;
    this.focusActive();
  };

  List.prototype.focused = function (event) {
    var element = this.isOwnFocus ? null : dom.around(event.target, 'opens', this.body);
    if (element) { this.setActive(Number(element.getAttribute('data-index'))); }
  };

  List.prototype.moveTo = function (index) {
    index = Math.min(Math.max(index, 0), this.shown.length - 1);
    if (index < 0) { return; }
    this.setActive(index);
    if (!this.elementAt(index)) {
      this.scroller.scrollTop = Math.max(0, index * this.rowHeight - this.scroller.clientHeight / 2);
      this.paint();
    }
    this.setActive(index);
    this.focusActive();
  };

  /** Moves from a row to its links and back; without any the keys scroll. */
  List.prototype.moveInRow = function (event) {
    var row = dom.around(event.target, 'opens', this.body);
    var stops = row ? [row].concat(Array.prototype.slice.call(row.querySelectorAll('.link'))) : [];
    var next = stops[stops.indexOf(event.target) + (event.key === 'ArrowRight' ? 1 : -1)];
    if (!next) { return; }
    event.preventDefault();
    next.focus();
  };

  List.prototype.press = function (event) {
    var page = Math.max(1, Math.floor(this.scroller.clientHeight / this.rowHeight) - 2);
    var steps = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity };
    var row = this.rowOf(event.target);
    if (event.key === 'ArrowRight' || event.key === 'ArrowLeft') {
      this.moveInRow(event);
    } else if (steps.hasOwnProperty(event.key)) {
      event.preventDefault();
      this.moveTo(this.active + steps[event.key]);
    } else if (row && event.target.nodeName === 'TR' && (event.key === 'Enter' || event.key === ' ')) {
      event.preventDefault();
      this.open(row, event);
    }
  };

  Tandril.List = List;
}(window));
