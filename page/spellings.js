/*
 * The spellings of the component's markup, one rule per element. A rule is asked at a "<"; it takes the element and
 * answers true, or leaves the reader as it is and answers false, and the "<" is then a character of a text.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var calls = Tandril.calls;
  var Reader = Tandril.fragment.Reader;

  var CLASSES = ['titles', 'orderrow', 'tablerows', 'tableheader', 'links', 'details', 'hyperbutton', 'cssOption'];

  var ZOOM_DOTS = '<small><strong>...</strong></small></span>';
  var ZOOM_SPAN = '<span class=links onclick=javascript:zoom(';

  /* What comes after the last row of a list, up to the end of the fragment. */
  var LIST_ENDS = [
    '</table></div></td></tr></table>', '</div></table></td></tr></table>', '</table></td></tr></table>', '</table>'
  ];

  /* After a form's row: another one, with a message before it when the orders could not be read, or the form's end. */
  var FORM_ROW = /^(?:[^<]*<tr[ >]|<\/table><\/form>)/;

  var CELL_STARTS = ['<td>', '<td ', ' <td>&nbsp;<input ', ZOOM_SPAN];

  var HINT = /^<small><i>(mm\/dd\/yyyy|mmddyyyy|hhmm)<\/i><\/small>/i;
  var PLAIN_ATTRIBUTES = /^(?: +(?:width|height|border|cellspacing|cellpadding|bgcolor|class|align|valign|nowrap|colspan)(?: ?= ?[#%\w-]*)?)* *$/i;
  var TEXT_INPUT = /^<input (disabled=true )?type=text size=(\d+) id=("?)([^\s"'<>=]+)\3(?=[ >])/i;
  var BUTTON = /^<input (?:id=(?:btnSave|btnDelete) )?type=button value=/i;
  var TITLE_BUTTON = /^<input type=submit {2}onclick=javascript:/i;
  var SELECT = /^<select(?: (disabled)=true)?(?: (?:name|id)=([^\s"'<>=]+))?(?: id=[^\s"'<>=]+)?( onchange=)?(?=[ >gj])/i;

  /* ---- where a value ends: what the component writes after it ---- */

  /** Whether a row that was closed before `at` is the end of one: values may hold the closing of a row, too. */
  Reader.prototype.isAfterRow = function (at) {
    var where = this.surroundings();
    if (where === 'form') { return FORM_ROW.test(this.text.substr(at, 200)); }
    if (where !== 'list' || this.has('<tr class=', at)) { return true; }
    return LIST_ENDS.some(function (end) { return at + end.length === this.text.length && this.has(end, at); }, this);
  };

  /** Whether a cell ends at `at`. Behind some drop-downs and buttons its "</td>" stands twice. */
  Reader.prototype.isCellEnd = function (at) {
    if (!this.has('</td>', at)) { return false; }
    var home = this.home();
    var isTwice = this.has('</td></td>', at) && typeof home.kids[home.kids.length - 1] !== 'string';
    var after = isTwice ? at + 10 : at + 5;
    if (this.has('</tr>', after)) { return this.isAfterRow(after + 5); }
    return after === this.text.length || this.hasAny(CELL_STARTS, after);
  };

  Reader.prototype.isAfterControl = function (at) {
    return this.isCellEnd(at) || this.hasAny([ZOOM_SPAN, '<small><i>'], at);
  };

  Reader.prototype.isAfterLink = function (at) {
    return at === this.text.length || this.isCellEnd(at);
  };

  function follows(literal) {
    return function (at) { return this.has(literal, at); };
  }

  var BEFORE_FORM_TABLE = follows('<table width=100% border=0 class=details>');
  var BEFORE_CALL = follows('javascript:');

  /* ---- openings ---- */

  /* A rule runs as a method of the reader; `at` is the place of its "<". */
  var OPENINGS = {
    table: function (at) {
      var node = this.plain(at, 'table');
      if (!node || !this.allowsTable(at)) { return false; }
      this.push(node);
      return true;
    },

    tr: function (at) {
      var hidden = this.has('<tr style="display:none">', at);
      var node = hidden ? { tag: 'tr', kids: [], hidden: true, end: at + 25 } : this.plain(at, 'tr');
      if (!node) { return false; }
      if (!this.enterRow(node, at)) { return false; }
      this.push(node);
      if (Tandril.fragment.isListRow(node)) { this.list = this.open.slice(0, -1); }
      return true;
    },

    td: function (at) {
      if (this.top().tag !== 'tr') { return false; }
      var field = /^<td id=([^\s"'<>=]+)>/.exec(this.text.substr(at, 300));
      var node = field ? { tag: 'td', kids: [], end: at + field[0].length } : this.plain(at, 'td');
      if (!node) { return false; }
      if (field && field[1] !== 'tdSelectActivity') { node.field = field[1]; }
      this.at = node.end;
      if (this.skipUnclosedCell()) { return true; }
      this.push(node);
      return true;
    },

    col: function (at) {
      var match = /^<COL WIDTH=\d+>/i.exec(this.text.substr(at, 20));
      if (!match || ['table', 'root'].indexOf(this.top().tag) < 0) { return false; }
      this.at = at + match[0].length;
      return true;
    },

    div: function (at) {
      var literal = '<div style="height:125; overflow:auto;">';
      if (!this.has(literal, at) || this.top().tag !== 'td') { return false; }
      this.push({ tag: 'div', kids: [] });
      this.at = at + literal.length;
      return true;
    },

    form: function (at) {
      if (!this.has('<form name=', at) || !this.allowsTable(at)) { return false; }
      var end = this.find('>', at, BEFORE_FORM_TABLE);
      if (end < 0) { return false; }
      var name = this.text.slice(at + 11, end);
      this.known = calls.unusual(this.known.concat(name));
      this.push({ tag: 'form', kids: [], name: name });
      this.at = end + 1;
      return true;
    },

    hr: function (at) {
      if (!this.has('<hr>', at) || this.surroundings() !== 'form' || !this.allowsControl()) { return false; }
      return this.leaf({ tag: 'hr', kids: [] }, at + 4);
    },

    strong: function (at) {
      var row = this.open[this.open.length - 2];
      if (!this.has('<strong>', at) || !row || row.cls !== 'titles') { return false; }
      var end = this.find('</strong>', at, this.isCellEnd);
      if (end < 0) { return false; }
      return this.leaf({ tag: 'strong', kids: [this.plainText(at + 8, end)] }, end + 9);
    },

    small: function (at) {
      var match = HINT.exec(this.text.substr(at, 40));
      if (!match || this.surroundings() !== 'form') { return false; }
      return this.leaf({ tag: 'small', kids: [match[1]], hint: match[1] }, at + match[0].length);
    },

    span: function (at) {
      var marker = ' class=links onclick=';
      var hasId = this.has('<span id=', at);
      var start = hasId ? this.find(marker, at + 9, BEFORE_CALL) : at + 5;
      if (start < 0 || !this.has(marker, start) || !this.allowsControl()) { return false; }
      var id = hasId ? this.text.slice(at + 9, start) : undefined;
      var read = this.readCall(start + marker.length, 'span', calls.TAG_END, id);
      if (!read || hasId && read.call.args.indexOf(id) < 0) { return false; }
      var end = this.has(ZOOM_DOTS, read.end) ? read.end + ZOOM_DOTS.length - 7
        : this.find('</span>', read.end, this.isCellEnd);
      if (end < 0) { return false; }
      var text = read.call.name === 'zoom' ? '...' : this.plainText(read.end, end);
      return this.leaf({ tag: 'span', cls: 'links', kids: [text], call: read.call }, end + 7);
    },

    a: function (at) {
      var match = /^<a (class=cssOption )?href=/.exec(this.text.substr(at, 30));
      if (!match || !this.allowsControl()) { return false; }
      var read = this.readCall(at + match[0].length, 'a', calls.TAG_END);
      var end = read ? this.find('</a>', read.end, this.isAfterLink) : -1;
      if (end < 0) { return false; }
      var node = { tag: 'a', kids: [this.plainText(read.end, end)], call: read.call };
      if (match[1]) { node.cls = 'cssOption'; }
      return this.leaf(node, end + 4);
    },

    input: function (at) {
      return this.allowsControl() && (this.titleButton(at) || this.button(at) || this.textInput(at));
    },

    select: function (at) {
      var match = SELECT.exec(this.text.substr(at, 400));
      if (!match || !this.allowsControl('select')) { return false; }
      var node = { tag: 'select', kids: [], name: match[2], field: match[2] };
      if (match[1]) { node.disabled = true; }
      var end = at + match[0].length;
      if (match[3]) {
        var read = this.readCall(end, 'select', calls.TAG_END);
        if (!read) { return false; }
        node.call = read.call;
        end = read.end;
      } else if (this.text.charAt(end) !== '>' || this.surroundings() !== 'form') {
        return false;
      } else {
        end += 1;
      }
      this.home().kids.push(node);
      this.open.push(node);
      this.within.push(this.surroundings());
      this.at = end;
      return true;
    },

    option: function (at) {
      var top = this.top();
      if (!/^<option value=/i.test(this.text.substr(at, 14)) || (top.tag !== 'select' && top.tag !== 'root')) { return false; }
      return this.option(at + 14);
    },

    textarea: function (at) {
      var match = /^<textarea rows=4 cols=30 id=([^\s"'<>=]+)>/.exec(this.text.substr(at, 300));
      if (!match || !this.allowsControl() || this.surroundings() !== 'form') { return false; }
      var start = at + match[0].length;
      var end = this.find('</textarea>', start, this.isAfterControl);
      if (end < 0) { return false; }
      return this.leaf({ tag: 'textarea', kids: [], field: match[1], value: this.text.slice(start, end) }, end + 11);
    }
  };

  /** Whether a table may stand here: in a cell before anything else, and one without attributes only with a row in it. */
  Reader.prototype.allowsTable = function (at) {
    var top = this.top();
    if (top.tag !== 'td') { return ['root', 'form', 'div'].indexOf(top.tag) >= 0; }
    var where = this.surroundings();
    return where === 'panel' && top.kids.length === 0 && (!this.has('<table>', at) || this.has('<tr>', at + 7));
  };

  /* The attributes of plain elements are few and come again and again. */
  var attributesRead = {};
  var attributesKept = 0;

  /** The class and the colspan among plain attributes, or null when they are not plain. */
  function readAttributes(text) {
    if (attributesRead.hasOwnProperty(text)) { return attributesRead[text]; }
    var cls = /class=(\w+)/i.exec(text);
    var span = /colspan=(\d+)/i.exec(text);
    var known = PLAIN_ATTRIBUTES.test(text) ? {
      cls: cls && CLASSES.indexOf(cls[1]) >= 0 ? cls[1] : undefined, colspan: span ? Number(span[1]) : undefined
    } : null;
    if (attributesKept++ > 500) {
      attributesRead = {};
      attributesKept = 0;
    }
    attributesRead[text] = known;
    return known;
  }

  /** An element whose attributes are fixed words: {tag, kids, end, ...}, or null when they are not. */
  Reader.prototype.plain = function (at, tag) {
    var end = this.text.indexOf('>', at);
    if (end < 0 || end - at > 120) { return null; }
    var known = readAttributes(this.text.slice(at + 1 + tag.length, end));
    if (!known) { return null; }
    var node = { tag: tag, kids: [], end: end + 1 };
    if (known.cls) { node.cls = known.cls; }
    if (known.colspan !== undefined) { node.colspan = known.colspan; }
    this.at = node.end;
    return node;
  };

  /** The button bars hold a cell that is never closed: it is empty, and the next cell follows it at once. */
  Reader.prototype.skipUnclosedCell = function () {
    var next = '<td align=right><input ';
    if (this.has('&nbsp;<td>' + next, this.at)) { this.at += 10; return true; }
    return this.has(next, this.at);
  };

  Reader.prototype.titleButton = function (at) {
    var match = TITLE_BUTTON.exec(this.text.substr(at, 50));
    var read = match && this.readCall(at + match[0].length, 'submit', calls.TITLE_END);
    var value = read && /^( _ | x )">/.exec(this.text.substr(read.end, 5));
    if (!value) { return false; }
    return this.leaf({ tag: 'input', kids: [], kind: 'submit', value: value[1], call: read.call }, read.end + 5);
  };

  Reader.prototype.button = function (at) {
    var match = BUTTON.exec(this.text.substr(at, 60));
    if (!match) { return false; }
    var start = at + match[0].length;
    var marker = ' onclick=';
    var end = this.find(marker, start, BEFORE_CALL);
    var read = end >= 0 && this.readCall(end + marker.length, 'button', calls.TAG_END);
    if (!read) { return false; }
    var label = this.text.slice(start, end);
    if (this.surroundings() === 'list') { label = label.replace(/^"([^]*)"$/, '$1'); }
    return this.leaf({ tag: 'input', kids: [], kind: 'button', value: label, call: read.call }, read.end);
  };

  Reader.prototype.textInput = function (at) {
    var match = TEXT_INPUT.exec(this.text.substr(at, 400));
    if (!match || this.surroundings() !== 'form') { return false; }
    var node = { tag: 'input', kids: [], kind: 'text', size: Number(match[2]), field: match[4] };
    if (match[1]) { node.disabled = true; }
    var start = at + match[0].length;
    if (this.text.charAt(start) === '>') { return this.leaf(node, start + 1); }
    if (!this.has(' value=', start)) { return false; }
    /* Dates and times of the plain rows stand without quotes, everything else with them. */
    var quoted = !(node.size === 15 || node.size === 4 && !match[3]);
    if (quoted && !this.has(' value="', start)) { return false; }
    start += quoted ? 8 : 7;
    var ending = quoted ? '">' : '>';
    var end = this.find(ending, start, this.isAfterControl);
    if (end < 0) { return false; }
    node.value = this.text.slice(start, end);
    return this.leaf(node, end + ending.length);
  };

  /** An option's value runs to its ">"; where the text repeats the value, a ">" of the value is told by that. */
  Reader.prototype.option = function (start) {
    var ends = /<option value=|<\/select>(?=<\/td>)|<\/option>|$/i;
    var rest = this.text.substr(start, 2000);
    var bracket = rest.indexOf('>');
    if (bracket < 0) { return false; }
    for (var at = bracket; at >= 0; at = rest.indexOf('>', at + 1)) {
      var behind = rest.substr(at + 1);
      if (behind.substr(0, at) === rest.substr(0, at) && behind.substr(at).search(ends) === 0) { bracket = at; break; }
    }
    var value = rest.slice(0, bracket);
    var node = { tag: 'option', kids: [] };
    if (/ selected$/.test(value)) { node.selected = true; }
    node.value = value.replace(/ selected$| $/, '');
    var text = rest.substr(bracket + 1);
    var length = text.search(ends);
    var from = start + bracket + 1;
    node.kids.push(this.plainText(from, from + length).trim());
    this.top().kids.push(node);
    this.at = from + length;
    if (/^<\/option>/i.test(this.text.substr(this.at, 9))) { this.at += 9; }
    return true;
  };

  /* ---- closings ---- */

  var CLOSINGS = {
    td: function (at) {
      return this.isCellEnd(at) && (this.close('td') || this.top().tag !== 'td');
    },
    tr: function () {
      if (this.top().tag === 'td') { return false; }
      this.close('tr');
      return true;
    },
    table: function () {
      if (this.top().tag === 'td' || this.top().tag === 'tr') { return false; }
      for (var i = this.open.length - 1; i > 0; i--) {
        if (this.open[i].tag === 'table') {
          this.cut(i);
          return true;
        }
      }
      return this.open.length === 1;
    },
    /* Some lists close their scrolling area before the table in it. */
    div: function () {
      return this.close('div') || this.top().tag === 'table';
    },
    form: function () {
      return this.close('form');
    },
    select: function () {
      return this.top().tag === 'select' && this.close('select');
    }
  };

  Tandril.spellings = { openings: OPENINGS, closings: CLOSINGS };
}(typeof window === 'undefined' ? global : window));
