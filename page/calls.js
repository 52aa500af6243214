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
    showdetails: { by: 'span', within: ['list'], counts: [5], loose: shownKey },
    showdetailsforhra: { by: 'span', within: ['list'], counts: [5], loose: function () { return 3; } },
    zoom: { by: 'span', within: ['form'], counts: [2] },
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

  /** A link to a value shows that value: this tells a parenthesis of the value from the end of the call. */
  function isShown(rule, args, text, at) {
    if (rule.shows === undefined) { return true; }
    var expected = args[rule.shows] + '</a></td>';
    return text.substr(at, expected.length) === expected;
  }

  /** The arguments that `list` holds by the rule and the text after the call, or null. */
  function readArguments(list, rule, id, text, after) {
    var parts = splitArguments(list, rule);
    return parts && readings(parts, rule, id).filter(function (args) { return isShown(rule, args, text, after); })[0] || null;
  }

  Tandril.calls = {
    CHOSEN: CHOSEN,
    TITLE_END: TITLE_END,
    TAG_END: TAG_END,

    isKnown: function (name) {
      return CALLS.hasOwnProperty(name);
    },

    /**
     * Reads "javascript:name(arguments" at a place of a text up to `ending`: {call: {name, args}, end}, or null when it is
     * no call that this element may make. element: {by: kind of element, within: its surroundings, id: its id}. An
     * argument may hold the text of an ending, so each one before `limit` is tried until the number of arguments fits.
     */
    read: function (text, at, element, ending, limit) {
      var match = /^(?:javascript:)?([A-Za-z]+)\(/.exec(text.substr(at, 40));
      var rule = match && CALLS.hasOwnProperty(match[1]) && CALLS[match[1]];
      if (!rule || rule.by !== element.by || rule.within.indexOf(element.within) < 0) { return null; }
      var start = at + match[0].length;
      for (var end = text.indexOf(ending, start), tries = 0; end >= 0 && end < limit && tries < TRIES; tries++) {
        var after = end + ending.length;
        var args = readArguments(text.slice(start, end), rule, element.id, text, after);
        if (args) { return { call: { name: match[1], args: args }, end: after }; }
        end = text.indexOf(ending, end + 1);
      }
      return null;
    }
  };
}(typeof window === 'undefined' ? global : window));
