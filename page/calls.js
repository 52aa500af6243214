/*
 * The calls that a fragment's links and buttons ask for, such as javascript:showdetails("1","A1","","","2"): read as a
 * name and literal arguments, never run as a script. Only the functions of this table can be asked for.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  /* The two buttons of a title bar stand before their value, all other calls end their tag. */
  var TITLE_END = ') value="';
  var TAG_END = ')>';
  var SEPARATOR = '","';

  /* Which element may ask for which page function, in which surroundings, and with how many arguments. */
  var CALLS = {
    minimize: { by: 'submit', within: ['title'], counts: [1] },
    winclose: { by: 'submit', within: ['title'], counts: [1] },
    showdetails: { by: 'span', within: ['list'], counts: [5], loose: shownKey, spread: true },
    showdetailsforhra: { by: 'span', within: ['list'], counts: [5], loose: function () { return 3; } },
    zoom: { by: 'span', within: ['form'], counts: [2], loose: function () { return 1; } },
    newobject: { by: 'a', within: ['panel'], counts: [2, 3], bareFirst: true },
    ListCostLines: { by: 'a', within: ['panel'], counts: [3] },
    hyperlink: { by: 'a', within: ['list', 'form'], counts: [3, 2], shows: 1, loose: function () { return 1; } },
    FillValues: { by: 'a', within: ['panel'], counts: [2, 3], shows: 0, loose: function () { return 0; } },
    ShowErrors: { by: 'a', within: ['panel'], counts: [0] },
    newObject: { by: 'button', within: ['list', 'panel'], counts: [3], bareFirst: true },
    saveObject: { by: 'button', within: ['panel', 'form'], counts: [5] },
    deleteObject: { by: 'button', within: ['panel'], counts: [4] },
    CreateActivity: { by: 'button', within: ['panel'], counts: [2] },
    showlines: {
      by: 'select', within: ['panel'], counts: [3], chosenFirst: 'costtype.options[costtype.selectedIndex].value,'
    },
    getActivityDrop: { by: 'select', within: ['form'], counts: [0] }
  };

  /* Where a key of several parts stands in showdetails: the order, the activity or the line, by the kind of record. */
  function shownKey(parts) {
    return parts[0] === '1' ? 1 : parts[0] === '2' ? 2 : 3;
  }

  /* Stands for "the chosen option's value" among the arguments of a call. */
  var CHOSEN = { chosen: true };

  var TRIES = 50;
  var SPREAD = 6; /* separators in the keys of one call */
  var LABEL = 60; /* characters of a label before the keys of a refused record */
  var NEAR = 5000; /* characters that a call with unusual keys may take */

  /** Splits the text between the parentheses of a call into its literal arguments; null when it is not a list of them. */
  function splitArguments(text, rule) {
    var first = [];
    if (rule.chosenFirst) {
      if (text.substr(0, rule.chosenFirst.length) !== rule.chosenFirst) { return null; }
      first = [CHOSEN];
      text = text.substr(rule.chosenFirst.length);
    } else if (rule.bareFirst && /^\d,/.test(text)) {
      first = [text.charAt(0)];
      text = text.substr(2);
    }
    if (text === '') { return first; }
    if (text.length < 2 || text.charAt(0) !== '"' || text.charAt(text.length - 1) !== '"') { return null; }
    return first.concat(text.slice(1, -1).split(SEPARATOR));
  }

  /** The list with the parts from `first` on, `count` of them, put together again as the one argument that they were. */
  function rejoin(parts, first, count) {
    return parts.slice(0, first).concat(parts.slice(first, first + count).join(SEPARATOR), parts.slice(first + count));
  }

  /**
   * The lists of arguments that the parts may stand for. A key or a value may itself hold what separates two arguments;
   * then there are more parts than arguments, and the surplus belongs to the value that the link shows, or to the order
   * number that the element has as its id.
   */
  function readings(parts, rule, id) {
    var known = id ? id.split(SEPARATOR).length : 1;
    if (known > 1 && rejoin(parts, 1, known)[1] === id) { parts = rejoin(parts, 1, known); }
    return rule.counts.filter(function (count) { return parts.length >= count; }).map(function (count) {
      var surplus = parts.length - count;
      return surplus && rule.loose ? rejoin(parts, rule.loose(parts), surplus + 1) : parts;
    }).filter(function (args) { return rule.counts.indexOf(args.length) >= 0; });
  }

  /** All ways to make five arguments of the parts when the surplus belongs to the keys, the arguments 1 to 3. */
  function spread(parts) {
    var surplus = parts.length - 5;
    var all = [];
    for (var order = 0; surplus > 0 && surplus <= SPREAD && order <= surplus; order++) {
      var first = rejoin(parts, 1, order + 1);
      for (var activity = 0; order + activity <= surplus; activity++) {
        all.push(rejoin(rejoin(first, 2, activity + 1), 3, surplus - order - activity + 1));
      }
    }
    return all;
  }

  /** Whether a link of a list shows these keys: the last one alone or, among the refused records, all behind a label. */
  function showsKeys(args, text, at) {
    var all = args.slice(1, 4).filter(Boolean).join('/ ') + '</span>';
    var last = args[shownKey(args)] + '</span>';
    return text.substr(at, last.length) === last || text.substr(at, all.length + LABEL).indexOf(all) >= 0;
  }

  /* Stand for known keys while a call is taken apart; no text of the component has these characters. */
  var MASKS = 0xe000;

  function repeated(character, count) {
    return new Array(count + 1).join(character);
  }

  /**
   * Hides the known keys that hold a quote or the end of a call, so that they are not taken apart. Each becomes a text of
   * its own length: { text, shown: {text: key} }. `known` are keys that the page asked for.
   */
  function mask(text, known) {
    var shown = {};
    known.forEach(function (key, index) {
      var cover = repeated(String.fromCharCode(MASKS + index), key.length);
      var parts = text.split('"' + key + '"');
      if (parts.length < 2) { return; }
      shown[cover] = key;
      text = parts.join('"' + cover + '"');
    });
    return { text: text, shown: shown };
  }

  /** A link to a value shows that value: this tells a parenthesis of the value from the end of the call. */
  function isShown(rule, args, text, at) {
    if (rule.shows === undefined) { return true; }
    var expected = args[rule.shows] + '</a></td>';
    return text.substr(at, expected.length) === expected;
  }

  /** The arguments that `list` holds by the rule and the text after the call, or null. */
  function readArguments(list, rule, element, text, after) {
    var parts = splitArguments(list, rule);
    if (!parts) { return null; }
    parts = parts.map(function (part) { return element.shown.hasOwnProperty(part) ? element.shown[part] : part; });
    var shown = rule.spread ? spread(parts).filter(function (args) {
      return (!element.id || args[1] === element.id) && showsKeys(args, text, after);
    }) : [];
    return shown.concat(readings(parts, rule, element.id).filter(function (args) { return isShown(rule, args, text, after); }))[0] || null;
  }

  /** The keys that the arguments of a call cannot be told from without knowing them, the longest first. */
  function unusual(keys) {
    return keys.filter(function (key) { return key.indexOf('"') >= 0; }).sort(function (a, b) { return b.length - a.length; });
  }

  Tandril.calls = {
    CHOSEN: CHOSEN,
    TITLE_END: TITLE_END,
    TAG_END: TAG_END,

    isKnown: function (name) {
      return CALLS.hasOwnProperty(name);
    },

    unusual: unusual,

    /**
     * Reads "javascript:name(arguments" at a place of a text up to `ending`: {call: {name, args}, end}, or null when it is
     * no call that this element may make. element: {by: kind of element, within: its surroundings, id: its id, known: the
     * unusual ones of the keys that the fragment is about}. An argument may hold the text of an ending, so each one
     * before `limit` is tried until the number of arguments fits.
     */
    read: function (text, at, element, ending, limit) {
      var match = /^(?:javascript:)?([A-Za-z]+)\(/.exec(text.substr(at, 40));
      var rule = match && CALLS.hasOwnProperty(match[1]) && CALLS[match[1]];
      if (!rule || rule.by !== element.by || rule.within.indexOf(element.within) < 0) { return null; }
      var start = at + match[0].length;
      var masked = element.known.length ? mask(text.slice(start, Math.min(limit, start + NEAR)), element.known) : null;
      var source = masked ? masked.text : text;
      var shift = masked ? start : 0;
      element.shown = masked ? masked.shown : {};
      for (var end = source.indexOf(ending, start - shift), tries = 0; end >= 0 && end + shift < limit && tries < TRIES; tries++) {
        var after = end + shift + ending.length;
        var args = readArguments(source.slice(start - shift, end), rule, element, text, after);
        if (args) { return { call: { name: match[1], args: args }, end: after }; }
        end = source.indexOf(ending, end + 1);
      }
      return null;
    }
  };
}(typeof window === 'undefined' ? global : window));
