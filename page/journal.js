/*
 * What must survive a crash in the middle of a synchronisation: the upload that is not settled yet, what the last report
 * confirmed, the time of the last success, and since when changes wait. It is kept in a file by the host, or in the
 * browser's storage without one.
 *
 * The upload: { state, text, keys, reason, report, time } with the states, in their order:
 *   preparing  the component is asked for the changes; keys names those that it may mark as sent
 *   prepared   text holds them, and none of its bytes has left
 *   sent       bytes may have left: the same ones go out again before anything new does
 *   refused    the server will not take them, for the reason
 *   answered   report is what the server said, still to be stored
 * It is taken away when the report is stored. What could not be kept lives as long as the window; the engineer is asked
 * before it is sent.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  var OLD_KEYS = { upload: 'tandril.upload', lastSync: 'tandril.lastSync', confirmed: 'tandril.confirmed' };
  var LOCK = 'tandril.syncing';
  var ROOM = 'tandril.room';
  var LOCK_LIFE = 60000; /* milliseconds after which the lock of a window that is gone counts no more */

  var own = String(Math.random()).slice(2);
  var content = {};
  var revision = 0;
  var isKept = true;
  var waiting = []; /* changes to be written, one at a time */
  var readers = []; /* what waits until all of them are written */

  /* ---- the browser's storage ---- */

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

  function fits(length) {
    var isRoom = write(ROOM, new Array(Math.ceil(length) + 1).join('x'));
    remove(ROOM);
    return isRoom;
  }

  /* ---- reading and writing ---- */

  function take(entry) {
    revision = entry.revision || 0;
    content = entry.content || {};
  }

  function withChanges(changes) {
    var next = {};
    Object.keys(content).concat(Object.keys(changes)).forEach(function (key) {
      var value = changes.hasOwnProperty(key) ? changes[key] : content[key];
      if (value !== null) { next[key] = value; }
    });
    return next;
  }

  /* An upload keeps its time through all states, so that it tells one upload from another. */
  function timeOf(upload) {
    return upload ? upload.time : 0;
  }

  /**
   * Writes the first of the changes that wait. When another window's came before it is written after that one, unless
   * the upload is another one by now.
   */
  function writeNext() {
    var job = waiting[0];
    var next = withChanges(job.changes);
    var before = timeOf(content.upload);
    function end(outcome) {
      waiting.shift();
      if (waiting.length) { writeNext(); }
      job.done(outcome);
      if (!waiting.length) { readers.splice(0).forEach(function (read) { read(); }); }
    }
    Tandril.transport.writeJournal(revision, next, function (answer) {
      if (answer.ok) {
        revision = answer.entry.revision;
        content = next;
        isKept = true;
        end('kept');
      } else if (answer.changed) {
        take(answer.entry);
        if (job.isNote || timeOf(content.upload) === before) { writeNext(); } else { end('changed'); }
      } else {
        content = next;
        isKept = !next.upload;
        end('unkept');
      }
    });
  }

  function save(changes, isNote, done) {
    waiting.push({ changes: changes, isNote: isNote, done: done || function () {} });
    if (waiting.length === 1) { writeNext(); }
  }

  /* While something is written, what is known and what is kept are both older than it. */
  function whenWritten(read) {
    if (waiting.length) { readers.push(read); } else { read(); }
  }

  /* Earlier versions kept everything in the browser's storage. */
  function bringOver(done) {
    var found = {};
    Object.keys(OLD_KEYS).forEach(function (name) {
      var value = read(OLD_KEYS[name]);
      if (value !== null) { found[name] = value; }
    });
    if (!Object.keys(found).length) {
      done();
      return;
    }
    save(found, false, function (outcome) {
      if (outcome !== 'unkept') { Object.keys(OLD_KEYS).forEach(function (name) { remove(OLD_KEYS[name]); }); }
      done();
    });
  }

  /* Closing the window would lose an upload that only this window knows. */
  root.addEventListener('beforeunload', function (event) {
    if (isKept) { return; }
    event.preventDefault();
    event.returnValue = '';
  });

  /** Whether another window synchronises. */
  function isElsewhere() {
    var lock = read(LOCK);
    return Boolean(lock) && lock.owner !== own && Date.now() - lock.time < LOCK_LIFE;
  }

  function unlock() {
    var lock = read(LOCK);
    if (lock && lock.owner === own) { remove(LOCK); }
  }

  root.addEventListener('pagehide', unlock);

  function load(done) {
    if (!isKept) {
      done(false);
      return;
    }
    Tandril.transport.readJournal(function (answer) {
      if (waiting.length) {
        whenWritten(function () { load(done); });
        return;
      }
      if (answer.ok) { take(answer.entry); }
      if (answer.ok && answer.entry.content === null) {
        bringOver(function () { done(Boolean(answer.entry.damaged)); });
      } else {
        done(false);
      }
    });
  }

  Tandril.journal = {
    /**
     * Reads what is kept, once all changes are written; done(isDamaged). An upload that only this window knows stays as it
     * is, and so does everything when nothing can be read.
     */
    load: function (done) { whenWritten(function () { load(done); }); },

    upload: function () { return content.upload || null; },

    /**
     * Keeps the upload, null once it is settled; done("kept"), done("unkept") when only this window has it, or
     * done("changed") when another window has written in the meantime and nothing was kept.
     */
    keepUpload: function (upload, done) { save({ upload: upload }, false, done); },
    isKept: function () { return isKept; },

    /** Whether an upload of so many characters could be kept. The host tells when it comes to it. */
    hasRoom: function (length) { return !Tandril.transport.isDirect() || fits(length); },

    /** Whether the browser keeps what is typed. */
    keepsInput: function () { return fits(0); },

    /** What the last report has confirmed; see records.confirmed. */
    confirmed: function () { return content.confirmed || {}; },
    keepConfirmed: function (digests) { save({ confirmed: digests, waitingSince: null }, true); },

    /** Since when changes wait, in milliseconds, as far as a page has seen it; 0 for none. */
    waitingSince: function () { return content.waitingSince || 0; },
    noteWaiting: function (isWaiting) {
      if (isWaiting !== Boolean(content.waitingSince)) { save({ waitingSince: isWaiting ? Date.now() : null }, true); }
    },

    /** Time of the last success in milliseconds, 0 for never. */
    lastSuccess: function () { return content.lastSync || 0; },
    noteSuccess: function (done) { save({ lastSync: Date.now() }, true, done); },

    isElsewhere: isElsewhere,

    /** Calls the listener when another window begins or ends to synchronise, or stopped without a word. */
    watchOthers: function (listener) {
      var known = isElsewhere();
      var clock = 0;
      function look() {
        root.clearTimeout(clock);
        if (isElsewhere()) { clock = root.setTimeout(look, LOCK_LIFE); }
        if (isElsewhere() === known) { return; }
        known = !known;
        listener();
      }
      root.addEventListener('storage', function (event) {
        if (event.key === LOCK) { look(); }
      });
    },

    /** Takes or renews the lock of this window; false when another window has it. */
    lock: function () {
      if (isElsewhere()) { return false; }
      write(LOCK, { owner: own, time: Date.now() });
      return true;
    },
    unlock: unlock
  };
}(window));
