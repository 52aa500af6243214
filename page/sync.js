/*
 * The synchronisation with the enterprise server: send what was changed, store the report, fetch orders, fetch master data,
 * in this order. A step that fails ends it; what was done before stays, and nothing of the day's work is lost.
 *
 * The view it reports to: step(name, state, text) with the states "running", "done", "skipped" and "failed";
 * progress(name, loaded, total, text); note(text), at the running step; choose(name, text, choices) with
 * [{label, run, confirm, stays}], the one that changes nothing first; end(succeeded).
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var journal = Tandril.journal;
  var answers = Tandril.answers;
  var text = function () { return Tandril.text.apply(null, arguments); };

  /* What the storage needs beside an upload: its quotes with a sign before them, and the server's report. */
  var GROWTH = 1.25;
  var REPORT_ROOM = 20000;

  var BEAT = 10000; /* milliseconds between two signs of life to the other windows */
  var SILENCE = 5; /* seconds without a byte until the engineer is told, and told again */

  /* What is counted in the texts that go up and come down. */
  var ENTRIES = { upload: /<record\s/g, orders: /<record\s/g, masterdata: /<row\s/g };

  function countOf(xml, pattern) {
    return (xml.match(pattern) || []).length;
  }

  function inKiB(bytes) {
    return Math.ceil(bytes / 1024);
  }

  function Sync(view) {
    this.view = view;
    this.cancelled = false;
    this.running = null;
  }

  Sync.prototype.start = function () {
    var self = this;
    if (!journal.lock()) {
      this.fail('send', text('syncElsewhere'));
      return;
    }
    this.beat = root.setInterval(journal.lock, BEAT);
    journal.load(function () { self.send(); });
  };

  Sync.prototype.leave = function (succeeded) {
    root.clearInterval(this.beat);
    journal.unlock();
    this.view.end(succeeded);
  };

  Sync.prototype.cancel = function () {
    this.cancelled = true;
    if (this.running) { this.running.abort(); } else { this.view.note(text('syncCancelling')); }
  };

  Sync.prototype.fail = function (step, words) {
    this.view.step(step, 'failed', words);
    this.leave(false);
  };

  /** Goes on with `next` unless the engineer has cancelled. */
  Sync.prototype.goOn = function (step, next) {
    journal.lock();
    if (this.cancelled) { this.fail(step, text('syncCancelled')); } else { next.call(this); }
  };

  /** Keeps the upload in its new state; `next` runs unless it is another window's by now, with whether it was kept. */
  Sync.prototype.keep = function (step, upload, next) {
    var self = this;
    journal.keepUpload(upload, function (outcome) {
      if (outcome === 'changed') { self.fail(step, text('syncElsewhere')); } else { next.call(self, outcome === 'kept'); }
    });
  };

  Sync.prototype.call = function (step, method, args, done) {
    var self = this;
    Tandril.transport.call(method, args, function (answer) {
      if (answer.ok) { done.call(self, answer.result); } else { self.fail(step, Tandril.page.explain(method, answer)); }
    });
  };

  /** Tells again and again how long the server has been silent; heard() ends a silence, stop() the telling. */
  function watchSilence(tell) {
    var since = Date.now();
    var clock = root.setInterval(function () {
      var seconds = Math.round((Date.now() - since) / 1000);
      if (seconds > 0 && seconds % SILENCE === 0) { tell(seconds); }
    }, 1000);
    return {
      heard: function () { since = Date.now(); },
      stop: function () { root.clearInterval(clock); }
    };
  }

  /** Asks the server; done(reply), also when there is none. */
  Sync.prototype.request = function (step, verb, path, body, done) {
    var self = this;
    var count = body ? countOf(body, ENTRIES.upload) : 0;
    var silence = watchSilence(function (seconds) { self.view.note(text('syncSilent', seconds)); });
    this.running = Tandril.transport.enterprise(verb, path, body, function (reply) {
      self.running = null;
      silence.stop();
      done.call(self, reply);
    }, function (loaded, total, isUp) {
      silence.heard();
      journal.lock();
      self.view.progress(step, loaded, total, isUp ? text('syncUp', count, inKiB(loaded)) : text('syncDown', inKiB(loaded)));
    });
  };

  /** Fetches what a path answers and says how much of it came; done(text). Any other answer ends the step. */
  Sync.prototype.fetch = function (step, path, done) {
    this.view.step(step, 'running', '');
    this.request(step, 'GET', path, null, function (reply) {
      if (reply.ok && answers.isExpected(path, reply.text)) {
        this.view.note(text('syncTaking', inKiB(reply.text.length), countOf(reply.text, ENTRIES[path])));
        done.call(this, reply.text);
      } else {
        this.fail(step, this.cancelled ? text('syncCancelled') : answers.explain(path, reply));
      }
    });
  };

  /* ---- send and report ---- */

  Sync.prototype.send = function () {
    var upload = journal.upload();
    this.view.step('send', 'running', upload ? text('syncAgain') : '');
    if (upload && upload.state === 'answered') {
      this.view.step('send', 'done', text('syncAnswered'));
      this.store(upload);
    } else if (upload && upload.state === 'preparing') {
      this.takeBackPrepared(upload);
    } else if (upload) {
      this.post(upload);
    } else {
      this.findRoom();
    }
  };

  /* Nothing has left, so what was marked as sent when the page ended is marked as changed again. */
  Sync.prototype.takeBackPrepared = function (upload) {
    this.view.step('send', 'running', '');
    this.call('send', 'GetMailContent', ['Harbrook'], function (store) {
      var back = store ? Tandril.records.takeBack(store, upload.keys) : '';
      if (!back) {
        this.keep('send', null, this.findRoom);
        return;
      }
      this.call('send', 'updatexml', [back], function (error) {
        this.keep('send', null, function () {
          if (error) { this.fail('send', error); } else { this.findRoom(); }
        });
      });
    });
  };

  /* The component marks the records as sent when it makes the upload, so there must be room for it before. */
  Sync.prototype.findRoom = function () {
    this.call('send', 'GetMailContent', ['Harbrook'], function (store) {
      var size = store ? Tandril.records.sizeOfUpload(store) : 0;
      var upload = { state: 'preparing', keys: store ? Tandril.records.changedKeys(store) : [], time: Date.now() };
      function prepare() { this.prepare(upload); }
      function leave() { this.keep('send', null, function () { this.fail('send', text('syncNothingDone')); }); }
      if (!journal.hasRoom(size * GROWTH + REPORT_ROOM)) {
        this.askUnkept(prepare, leave);
        return;
      }
      this.keep('send', upload, function (isKept) {
        if (isKept) { prepare.call(this); } else { this.askUnkept(prepare, leave); }
      });
    });
  };

  Sync.prototype.askUnkept = function (sendAnyway, leave) {
    this.view.choose('send', text('syncNoRoom'), [
      { label: text('syncDoNotSend'), run: leave.bind(this) },
      { label: text('syncSendAnyway'), run: function () {
        this.isUnkeptAllowed = true;
        this.goOn('send', sendAnyway);
      }.bind(this) }
    ]);
  };

  Sync.prototype.prepare = function (upload) {
    this.call('send', 'CreateXMLStringForUpdate', [], function (xml) {
      if (xml) {
        this.keepPrepared({ state: 'prepared', text: xml, time: upload.time });
        return;
      }
      this.call('send', 'Get_Error', [], function (error) {
        this.keep('send', null, function () {
          if (error && error !== '1') {
            this.fail('send', error);
            return;
          }
          this.view.step('send', 'done', text('syncNothing'));
          this.view.step('report', 'skipped', '');
          this.goOn('download', this.download);
        });
      });
    });
  };

  /** Keeps a new upload and sends it; when there is no room after all, the engineer decides, unless he already has. */
  Sync.prototype.keepPrepared = function (upload) {
    this.keep('send', upload, function (isKept) {
      if (isKept || this.isUnkeptAllowed) {
        this.post(upload);
      } else {
        this.askUnkept(function () { this.post(upload); }, function () { this.takeBack(upload); });
      }
    });
  };

  /** Marks the records of an upload that never left as changed again. */
  Sync.prototype.takeBack = function (upload) {
    this.call('send', 'updatexml', [Tandril.records.again(upload.text)], function (error) {
      if (error) {
        this.fail('send', error);
      } else {
        this.keep('send', null, function () { this.fail('send', text('syncNothingDone')); });
      }
    });
  };

  /* Kept or not: the bytes that go out are those of the state before. */
  Sync.prototype.post = function (upload) {
    upload.state = 'sent';
    this.keep('send', upload, function () { this.goOn('send', function () { this.transfer(upload); }); });
  };

  Sync.prototype.transfer = function (upload) {
    this.request('send', 'POST', 'upload', upload.text, function (reply) {
      if (reply.ok && answers.isExpected('upload', reply.text)) {
        this.takeReport(upload, reply.text);
      } else if (this.cancelled) {
        this.fail('send', text('syncCancelledSent'));
      } else if (answers.isFinal(reply.status)) {
        this.refuse(upload, answers.said(reply));
      } else {
        this.fail('send', answers.explain('upload', reply));
      }
    });
  };

  Sync.prototype.takeReport = function (upload, report) {
    upload.state = 'answered';
    upload.report = report;
    this.keep('send', upload, function () {
      this.view.step('send', 'done', text('syncSent', Tandril.records.countChanged(upload.text)));
      this.store(upload);
    });
  };

  /* ---- an upload that the server refuses as a whole ---- */

  /** Lets the engineer keep the upload for another try or drop it; until then nothing new can be sent. */
  Sync.prototype.refuse = function (upload, reason) {
    upload.state = 'refused';
    upload.reason = reason;
    this.keep('send', upload, function () { this.askRefused(upload, reason); });
  };

  Sync.prototype.askRefused = function (upload, reason) {
    var self = this;
    this.view.choose('send', reason + ' ' + text('syncRefused'), [
      { label: text('syncKeep'), run: function () { self.fail('send', reason + ' ' + text('syncRefusedKept')); } },
      { label: text('syncSaveCopy'), stays: true, run: function () { Tandril.dialog.saveText('upload.xml', upload.text); } },
      {
        label: text('syncDrop'), run: function () { self.drop(upload); },
        confirm: { title: text('confirmDrop'), text: text('confirmDropText'), yes: text('syncDrop'), danger: true }
      }
    ]);
  };

  /**
   * Settles a refused upload like an answered one, with a report that refuses each of its records: they stay as they are,
   * stand among the refused records, and go out again once they are saved.
   */
  Sync.prototype.drop = function (upload) {
    upload.state = 'answered';
    upload.report = Tandril.records.refusal(upload.text, upload.reason, 'page-' + upload.time);
    this.keep('send', upload, function () {
      this.view.step('send', 'done', text('syncDropped'));
      this.store(upload);
    });
  };

  /** Stores the report, when there is one, and settles the upload. */
  Sync.prototype.store = function (upload) {
    this.view.step('report', 'running', '');
    if (!upload.report) {
      this.settle('<none/>', []);
      return;
    }
    this.call('report', 'GetMailContent', ['Harbrook'], function (store) {
      this.storeReport(upload.report, store ? Tandril.records.sentKeys(store) : []);
    });
  };

  /* A damaged stored report is put aside by the first try, so there is a second. */
  Sync.prototype.storeReport = function (report, sent, isSecond) {
    this.call('report', 'DownloadErrors', [report], function (error) {
      if (error && !isSecond) {
        this.storeReport(report, sent, true);
      } else if (error) {
        this.fail('report', error);
      } else {
        this.settle(report, sent);
      }
    });
  };

  /** Takes the upload out of the journal and notes what the report confirmed, as it stands in the store now. */
  Sync.prototype.settle = function (report, sent) {
    this.keep('report', null, function () { this.noteConfirmed(report, sent); });
  };

  Sync.prototype.noteConfirmed = function (report, sent) {
    this.call('report', 'GetMailContent', ['Harbrook'], function (xml) {
      if (xml) { journal.keepConfirmed(Tandril.records.confirmed(xml, report, sent)); }
      this.view.step('report', 'done', text('syncReported', countOf(report, /Status="Completed"/g), countOf(report, /Status="Error"/g)));
      this.goOn('download', this.download);
    });
  };

  /* ---- download ---- */

  Sync.prototype.download = function () {
    this.fetch('download', 'orders', function (xml) {
      this.call('download', 'DownloadXml', [xml], function (message) {
        this.call('download', 'Get_Error', [], function (error) {
          if (error && error !== '1') {
            this.fail('download', error);
            return;
          }
          this.view.step('download', 'done', message || '');
          this.goOn('masterData', this.masterData);
        });
      });
    });
  };

  Sync.prototype.masterData = function () {
    this.call('masterData', 'GetVariable', ['Currentmdb'], function (database) {
      if (!database) {
        this.view.step('masterData', 'skipped', text('syncNoDatabase'));
        this.succeed();
        return;
      }
      this.fetch('masterData', 'masterdata', function (xml) {
        this.call('masterData', 'Synchronize_MasterData', [xml], function (result) {
          if (result !== 'SUCCESSFUL') {
            this.fail('masterData', text('syncMasterFailed', result));
            return;
          }
          this.view.step('masterData', 'done', text('syncChanges', countOf(xml, ENTRIES.masterdata)));
          this.succeed();
        });
      });
    });
  };

  Sync.prototype.succeed = function () {
    var self = this;
    journal.noteSuccess(function () { self.leave(true); });
  };

  Tandril.Sync = Sync;
}(window));
