/*
 * Reads the fragments of the component into a tree of plain objects.
 *
 * A fragment carries values and labels exactly as they are stored, unescaped, so a browser's HTML parser would take
 * whatever markup they hold for its own and run it. This reader knows the few spellings that the component writes, and
 * nothing else: a "<" that does not begin one of them is a character of a text. A value ends where the component's own
 * closing stands, which is why closings are looked for together with what follows them. What comes out has no markup
 * left in it; render.js builds the document from it with createElement and text nodes.
 *
 * The tree: an element is {tag, kids, ...}, a text is a string. Further members, where they apply:
 *   cls       class word, one of CLASSES            call      {name, args}, what a click or a change asks for
 *   colspan   number                                field     name of the record's field that a control or cell holds
 *   hidden    true for a row that only travels      value     text of a control; undefined when it has none
 *   name      name of a form or a select            kind      "text", "button" or "submit" of an input
 *   disabled, selected, size                        hint      text of a format hint
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  var TAG =
    /^<(\/?)(table|tr|td|col|div|form|hr|strong|small|span|a|input|select|option|textarea)(?=[\s>])/i;
  var NO_BREAK_SPACE = /&nbsp;?/g;

  var FAR = 100000; /* characters; no value of a sane store is longer */

  /* What comes between a row and the next, by surroundings. */
  var ROW_LIMITS = { list: '</td></tr><tr class=', form: '</td></tr><tr' };

  /* `keys`: those of the records that the fragment is about, as far as they are known. */
  function Reader(text, keys) {
    this.text = text;
    this.known = Tandril.calls.unusual(keys || []);
    this.at = 0;
    this.root = { tag: 'root', kids: [] };
    this.open = [this.root];
    this.within = ['panel']; /* for each open element, what it is in: see surroundings() */
    this.rowStart = 0;
    this.rowEnd = -1; /* the row's closing, as far as it is known: what limit() found from rowStart on */
    this.list = null; /* the elements that were open when a list's last row began, its table last */
  }

  Reader.prototype.has = function (literal, at) {
    return this.text.substr(at, literal.length) === literal;
  };

  Reader.prototype.hasAny = function (literals, at) {
    for (var i = 0; i < literals.length; i++) {
      if (this.has(literals[i], at)) { return true; }
    }
    return false;
  };

  Reader.prototype.top = function () {
    return this.open[this.open.length - 1];
  };

  /** How far what begins at `from` can reach: in lists and forms to the end of the row. */
  Reader.prototype.limit = function (from) {
    var next = ROW_LIMITS[this.surroundings()];
    if (!next) { return from + FAR; }
    if (from < this.rowStart || from > this.rowEnd) {
      var end = this.text.indexOf(next, from);
      this.rowStart = from;
      this.rowEnd = end < 0 ? this.text.length : end;
    }
    return Math.min(this.rowEnd, from + FAR);
  };

  /**
   * The first place at or after `from` where `literal` stands and what comes after it passes `isEnd(place)`; -1 if there
   * is none.
   */
  Reader.prototype.find = function (literal, from, isEnd) {
    var limit = this.limit(from);
    for (var at = this.text.indexOf(literal, from); at >= 0 && at < limit; at = this.text.indexOf(literal, at + 1)) {
      if (isEnd.call(this, at + literal.length)) { return at; }
    }
    return -1;
  };

  /* ---- building the tree ---- */

  Reader.prototype.push = function (node) {
    this.top().kids.push(node);
    this.open.push(node);
    this.within.push(surroundingsIn(node, this.surroundings()));
  };

  /** Closes the elements above the lowest `depth` ones. */
  Reader.prototype.cut = function (depth) {
    this.open.length = depth;
    this.within.length = depth;
  };

  Reader.prototype.leaf = function (node, end) {
    this.home().kids.push(node);
    this.at = end;
    return true;
  };

  /** Where texts and controls go: the open element, or the last cell when they stand between two cells. */
  Reader.prototype.home = function () {
    var top = this.top();
    if (top.tag !== 'tr' && top.tag !== 'table') { return top; }
    var row = top.tag === 'tr' ? top : last(top.kids);
    if (row && row.tag === 'tr') {
      if (!row.kids.length) { row.kids.push({ tag: 'td', kids: [] }); }
      return last(row.kids);
    }
    return top;
  };

  Reader.prototype.addText = function (text) {
    if (text === '') { return; }
    text = decoded(text);
    var top = this.top();
    if ((top.tag === 'tr' || top.tag === 'table') && isBlank(text)) { return; }
    var kids = this.home().kids;
    if (typeof last(kids) === 'string') { kids[kids.length - 1] += text; } else { kids.push(text); }
  };

  /** Closes elements up to the innermost `tag`; false when none is open this side of a table. */
  Reader.prototype.close = function (tag) {
    for (var i = this.open.length - 1; i > 0; i--) {
      if (this.open[i].tag === tag) {
        this.cut(i);
        return true;
      }
      if (this.open[i].tag === 'table') { return false; }
    }
    return false;
  };

  function isListRow(node) {
    return node.tag === 'tr' && (node.cls === 'tablerows' || node.cls === 'orderrow');
  }

  function surroundingsIn(node, outside) {
    if (outside === 'list' || outside === 'title' || outside === 'heading') { return outside; }
    if (isListRow(node)) { return 'list'; }
    if (node.cls === 'titles') { return 'title'; }
    if (node.cls === 'tableheader') { return 'heading'; }
    return node.tag === 'form' ? 'form' : outside;
  }

  /** A text with its no-break spaces, the only characters that the component writes by name. */
  function decoded(text) {
    return text.indexOf('&nbsp') < 0 ? text : text.replace(NO_BREAK_SPACE, '\u00a0');
  }

  function last(list) {
    return list[list.length - 1];
  }

  function isBlank(text) {
    return /^[\s\u00a0]*$/.test(text);
  }

  /** Whether only blanks and other controls stand in the cell so far, so that markup may be the component's own. */
  function isFresh(node) {
    return node.kids.every(function (kid) { return typeof kid !== 'string' || isBlank(kid); });
  }

  /**
   * Makes the open element one that takes a row. A row of a list that comes right after another row is one even when
   * a value before it closed the list's table by what it holds.
   */
  Reader.prototype.enterRow = function (node, at) {
    this.at = node.end;
    if (this.top().tag === 'table' || this.top().tag === 'root' && !this.list) { return true; }
    if (!this.list || !isListRow(node) || !this.has('</tr>', at - 5)) { return false; }
    this.open = this.list.slice();
    this.within = this.open.map(function () { return 'panel'; });
    return true;
  };

  /** What the reader is in: "title", "heading", "list" (a row of one), "form", or "panel" for anything else. */
  Reader.prototype.surroundings = function () {
    return this.within[this.within.length - 1];
  };

  /**
   * Whether a control may stand here: at the start of a cell or behind another control, never behind a text. Outside
   * of forms and lists not even a blank comes before it, but before a drop-down.
   */
  Reader.prototype.allowsControl = function (tag) {
    var home = this.home();
    if (home.tag === 'root') { return true; }
    var where = this.surroundings();
    if (home.tag !== 'td' || home.field || where === 'heading') { return false; }
    if (where === 'list' && home.colspan === 0) { return true; }
    return where === 'panel' && tag !== 'select' ? home.kids.length === 0 : isFresh(home);
  };

  /** The call at `at`, as far as an element of the kind `by` may make it here; `id` is that of the element. */
  Reader.prototype.readCall = function (at, by, ending, id) {
    return Tandril.calls.read(this.text, at, { by: by, within: this.surroundings(), id: id, known: this.known }, ending, this.limit(at));
  };

  Reader.prototype.plainText = function (from, to) {
    return decoded(this.text.slice(from, to));
  };

  /** Takes the markup at the reader's place, a "<"; false when it is none of the component's. */
  Reader.prototype.markup = function () {
    var at = this.at;
    var match = TAG.exec(this.text.substr(at, 12));
    if (!match) { return false; }
    var tag = match[2].toLowerCase();
    if (match[1]) {
      if (!Tandril.spellings.closings.hasOwnProperty(tag) || this.text.charAt(at + match[0].length) !== '>') { return false; }
      if (!Tandril.spellings.closings[tag].call(this, at)) { return false; }
      this.at = at + match[0].length + 1;
      return true;
    }
    if (Tandril.spellings.openings[tag].call(this, at)) { return true; }
    this.at = at;
    return false;
  };

  /** Reads on until the end, or until `mayGoOn` says no; true when the end was reached. */
  Reader.prototype.run = function (mayGoOn) {
    var steps = 0;
    while (this.at < this.text.length) {
      if (mayGoOn && ++steps % 64 === 0 && !mayGoOn()) { return false; }
      var from = this.at;
      var next = this.text.indexOf('<', from);
      if (next < 0) { next = this.text.length; }
      this.addText(this.text.slice(from, next));
      this.at = next;
      if (next < this.text.length && !this.markup()) {
        this.addText('<');
        this.at = next + 1;
      }
    }
    return true;
  };

  Tandril.fragment = {
    Reader: Reader,
    isListRow: isListRow,

    /** The tree of a fragment: an element "root" that holds everything. For the keys see Reader. */
    read: function (text, keys) {
      var reader = new Reader(text, keys);
      reader.run();
      return reader.root;
    }
  };
}(typeof window === 'undefined' ? global : window));
