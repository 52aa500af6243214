/*
 * What must survive a crash in the middle of a synchronisation, kept in the browser's storage: the upload that is not
 * settled yet, the time of the last success, and which window is synchronising.
 *
 * The upload: { state: "prepared" | "sent" | "answered", text, report, time }. It is written before the first byte leaves
 * and taken away when the server's report is stored, so that the same bytes go out again before anything new does.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  var UPLOAD = 'tandril.upload';
  var SUCCESS = 'tandril.lastSync';
  var CONFIRMED = 'tandril.confirmed';
  var LOCK = 'tandril.syncing';
  var LOCK_LIFE = 60000; /* milliseconds after which the lock of a window that is gone counts no more */

  var own = String(Math.random()).slice(2);

  function read(key) {
    try {
      return JSON.parse(root.localStorage.getItem(key));
    } catch (unavailable) {
      return null;
    }
  }

  /** False when the browser would not keep it. */
  function write(key, value) {
    try {
      root.localStorage.setItem(key, JSON.stringify(value));
      return true;
    } catch (refused) {
      return false;
    }
  }

  function remove(key) {
    try {
      root.localStorage.removeItem(key);
    } catch (refused) {
      return;
    }
  }

  Tandril.journal = {
    upload: function () { return read(UPLOAD); },
    keepUpload: function (upload) { return write(UPLOAD, upload); },
    settleUpload: function () { remove(UPLOAD); },

    /** What the last report has confirmed; see records.confirmed. */
    confirmed: function () { return read(CONFIRMED) || {}; },
    keepConfirmed: function (digests) { write(CONFIRMED, digests); },

    /** Time of the last success in milliseconds, 0 for never. */
    lastSuccess: function () { return read(SUCCESS) || 0; },
    noteSuccess: function () { write(SUCCESS, Date.now()); },

    /** Takes or renews the lock of this window; false when another window has it. */
    lock: function () {
      var lock = read(LOCK);
      if (lock && lock.owner !== own && Date.now() - lock.time < LOCK_LIFE) { return false; }
      write(LOCK, { owner: own, time: Date.now() });
      return true;
    },
    unlock: function () { remove(LOCK); }
  };
}(window));
