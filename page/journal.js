/*
 * What must survive a crash in the middle of a synchronisation, kept in the browser's storage: the upload that is not
 * settled yet, the time of the last success, and which window is synchronising.
 *
 * The upload: { state: "prepared" | "sent" | "refused" | "answered", text, reason, report, time }. It is written before the
 * first byte leaves and taken away when the server's report is stored, so that the same bytes go out again before anything
 * new does. What the browser would not keep lives as long as the window; the engineer is asked before it is sent.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  var UPLOAD = 'tandril.upload';
  var SUCCESS = 'tandril.lastSync';
  var CONFIRMED = 'tandril.confirmed';
  var LOCK = 'tandril.syncing';
  var ROOM = 'tandril.room';
  var LOCK_LIFE = 60000; /* milliseconds after which the lock of a window that is gone counts no more */

  var own = String(Math.random()).slice(2);
  var unkept = null; /* the upload, while the browser does not keep it */

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

  /* Closing the window would lose an upload that only this window knows. */
  root.addEventListener('beforeunload', function (event) {
    if (!unkept) { return; }
    event.preventDefault();
    event.returnValue = '';
  });

  Tandril.journal = {
    upload: function () { return unkept || read(UPLOAD); },

    /** Keeps the upload; false when the browser would not, and only this window has it. */
    keepUpload: function (upload) {
      unkept = write(UPLOAD, upload) ? null : upload;
      return !unkept;
    },
    settleUpload: function () {
      unkept = null;
      remove(UPLOAD);
    },
    isKept: function () { return !unkept; },

    /** Whether the browser would keep a text of so many characters now. */
    hasRoom: function (length) {
      var isKept = write(ROOM, new Array(Math.ceil(length) + 1).join('x'));
      remove(ROOM);
      return isKept;
    },

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
    unlock: function () {
      var lock = read(LOCK);
      if (lock && lock.owner === own) { remove(LOCK); }
    }
  };
}(window));
