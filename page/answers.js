/*
 * What the enterprise server answers: whether it is what was asked for, and plain words for what is not. A network that
 * wants a sign-in answers everything with a page of its own and status 200, and a broken connection cuts an answer short;
 * neither may be taken for a report, for orders or for the field mapper.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var text = function () { return Tandril.text.apply(null, arguments); };

  /* Without one of these elements an answer is none; the other paths have nothing that must be there. */
  var HOLDS = { upload: 'File', fieldmapper: 'I18N' };

  /* The host's words for a server that is away, slow, or breaks off in the middle. */
  var NOT_THERE = [0, 502, 503, 504];

  /* Answers that the same bytes get again. Others pass with time, with a new sign-in or with a corrected address. */
  var FINAL = [400, 409, 410, 413, 414, 415, 422];

  var LONGEST = 300; /* characters of the server's own words */

  /** The first line of what the server says; "" for a page, which says nothing to an engineer. */
  function firstLine(words) {
    var line = words.trim().split('\n')[0].slice(0, LONGEST);
    return line.charAt(0) === '<' ? '' : line;
  }

  Tandril.answers = {
    /** Whether a text that came with status 200 is what this path answers. */
    isExpected: function (path, xml) {
      if (!/^[\s\ufeff]*<(?!!doctype html)/i.test(xml)) { return false; }
      var document = new root.DOMParser().parseFromString(xml, 'text/xml');
      var isPage = !document.documentElement || document.documentElement.localName.toLowerCase() === 'html';
      return !isPage && document.getElementsByTagName('parsererror').length === 0 &&
        (!HOLDS[path] || document.getElementsByTagName(HOLDS[path]).length > 0);
    },

    isAway: function (status) { return NOT_THERE.indexOf(status) >= 0; },
    isFinal: function (status) { return FINAL.indexOf(status) >= 0; },

    /** What the server said, as one sentence. */
    said: function (reply) {
      var line = firstLine(reply.text);
      return line ? text('syncServerSaid', reply.status, line) : text('syncServerStatus', reply.status);
    },

    /** What happened and what follows from it, for any answer that is not the expected one. */
    explain: function (path, reply) {
      var isUpload = path === 'upload';
      if (reply.ok) { return text(isUpload ? 'syncNoReport' : 'syncForeign'); }
      if (NOT_THERE.indexOf(reply.status) >= 0) { return text(isUpload ? 'syncNotSent' : 'syncNoServer'); }
      return Tandril.answers.said(reply) + ' ' + text(isUpload ? 'syncStaysHere' : 'syncUnchanged');
    }
  };
}(window));
