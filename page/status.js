/*
 * The header's honest words: mode, last success, what waits, what was refused; and the window of a synchronisation.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var page = Tandril.page;
  var journal = Tandril.journal;
  var text = function () { return Tandril.text.apply(null, arguments); };

  var STEPS = ['send', 'report', 'download', 'masterData'];
  var STEP_ICONS = { running: 'sync', done: 'check', skipped: 'minimize', failed: 'error' };
  var MINUTE = 60000;
  var LISTS = ['divList', 'divCosts', 'divCostLines'];

  /* ---- mode ---- */

  /** Before the mode is known nothing can be synchronised: the page is still fetching what a new computer lacks. */
  function showMode() {
    var sync = document.getElementById('sync');
    page.call('GetVariable', ['Mode'], function (mode) {
      var button = document.getElementById('mode');
      var isOffline = mode === 'Offline';
      button.setAttribute('data-mode', mode || '');
      button.setAttribute('title', text(isOffline ? 'goOnline' : 'goOffline'));
      dom.append(dom.empty(button), text(isOffline ? 'Offline' : 'Online'));
      sync.disabled = isOffline;
    }, function () { sync.disabled = false; });
  }

  function switchMode() {
    var isOffline = document.getElementById('mode').getAttribute('data-mode') === 'Offline';
    page.call('Set_Mode', [isOffline ? 'Online' : 'Offline'], showMode);
  }

  /* ---- what waits ---- */

  /** The time that has passed, in words; "" for less than a minute. */
  function span(time) {
    var minutes = Math.floor((Date.now() - time) / MINUTE);
    if (minutes < 1) { return ''; }
    if (minutes < 120) { return text('spanMinutes', minutes); }
    return minutes < 48 * 60 ? text('spanHours', Math.floor(minutes / 60)) : text('spanDays', Math.floor(minutes / 1440));
  }

  function lastSuccess(time) {
    if (!time) { return text('syncNever'); }
    return span(time) ? text('syncAgo', span(time)) : text('syncJustNow');
  }

  function since(time, words) {
    return time && span(time) ? text('syncFor', words, span(time)) : words;
  }

  function uploadWords(upload) {
    if (upload.state === 'preparing') { return text('syncInterrupted'); }
    return upload.state === 'refused' ? text('syncUploadRefused')
      : text('syncUnanswered', Tandril.records.countChanged(upload.text));
  }

  /** Counts the records that are changed and not confirmed; an upload without an answer waits as well. */
  function update() {
    journal.load(function () { showWaiting(); });
  }

  function showWaiting() {
    page.quietly('GetMailContent', ['Harbrook'], function (store) {
      page.quietly('GetMailContent', ['UploadReport'], function (report) { showState(store || '', report || ''); });
    });
  }

  function showState(store, report) {
    var records = Tandril.records;
    var waiting = records.countWaiting(store, journal.confirmed());
    var upload = journal.upload();
    var unanswered = upload ? 0 : records.countUnanswered(store, report);
    journal.noteWaiting(waiting > 0);
    var words = [
      lastSuccess(journal.lastSuccess()),
      waiting ? since(journal.waitingSince(), text('syncWaiting', waiting)) : text('syncNoneWaiting'),
      upload && since(upload.time, uploadWords(upload)),
      unanswered && text('syncSentOpen', unanswered),
      journal.isElsewhere() && text('syncOther'),
      !journal.isKept() && text('syncUnkept'),
      !journal.keepsInput() && text('noStorage')
    ];
    dom.append(dom.empty(document.getElementById('syncState')), words.filter(Boolean).join(' \u00b7 '));
  }

  /* What another window has fetched shows here, too, but not under the fingers of somebody who works in a list. */
  function followOthers() {
    journal.watchOthers(function () {
      update();
      if (journal.isElsewhere()) { return; }
      Tandril.views.updateErrors();
      LISTS.forEach(function (name) {
        if (!page.place(name).element.contains(document.activeElement)) { page.refresh(name); }
      });
    });
  }

  /* ---- the window of a synchronisation ---- */

  function makeStep(name) {
    return dom.make('li', { 'data-step': name, 'data-state': 'waiting' }, [
      dom.make('span', { 'class': 'mark' }),
      dom.make('div', {}, [dom.make('strong', {}, text('step_' + name)), dom.make('p', { 'class': 'said' })]),
      dom.make('progress', { hidden: true, 'aria-label': text('step_' + name) })
    ]);
  }

  function Window() {
    var self = this;
    this.steps = dom.make('ol', { 'class': 'steps', 'aria-live': 'polite' }, STEPS.map(makeStep));
    this.button = dom.make('button', { type: 'button', onclick: function () { self.press(); } }, text('no'));
    this.box = dom.make('div', { 'class': 'question', role: 'dialog', 'aria-modal': 'true', 'aria-labelledby': 'syncTitle' }, [
      dom.make('h2', { id: 'syncTitle' }, text('synchronise')), this.steps, this.bar = dom.make('div', { 'class': 'bar' }, this.button)
    ]);
    this.shade = dom.make('div', { 'class': 'shade' }, this.box);
    this.before = document.activeElement;
    Tandril.dialog.hold(this.shade, function () { self.press(); });
    document.body.appendChild(this.shade);
    this.button.focus();
    this.sync = new Tandril.Sync(this);
  }

  Window.prototype.row = function (name) {
    return this.steps.querySelector('[data-step="' + name + '"]');
  };

  Window.prototype.step = function (name, state, words) {
    var row = this.row(name);
    row.setAttribute('data-state', state);
    dom.append(dom.empty(row.querySelector('.mark')), Tandril.icon(STEP_ICONS[state]));
    dom.append(dom.empty(row.querySelector('.said')), words);
    row.querySelector('progress').hidden = state !== 'running';
  };

  Window.prototype.note = function (words) {
    var row = this.steps.querySelector('[data-state=running]');
    if (row) { dom.append(dom.empty(row.querySelector('.said')), words); }
  };

  Window.prototype.progress = function (name, loaded, total, words) {
    var row = this.row(name);
    var bar = row.querySelector('progress');
    if (total) {
      bar.max = total;
      bar.value = loaded;
    }
    dom.append(dom.empty(row.querySelector('.said')), words);
  };

  /** Ends a step with a question. The first choice changes nothing, so Escape takes it, too. */
  Window.prototype.choose = function (name, words, choices) {
    var self = this;
    this.step(name, 'failed', words);
    this.safe = function () { self.chosen(choices[0]); };
    var buttons = choices.map(function (choice) {
      return dom.make('button', { type: 'button', 'class': choice.confirm ? 'danger' : null, onclick: function () { self.pick(choice); } },
        choice.label);
    });
    dom.append(dom.empty(this.bar), buttons);
    buttons[0].focus();
  };

  Window.prototype.pick = function (choice) {
    var self = this;
    if (choice.stays) {
      choice.run();
    } else if (choice.confirm) {
      Tandril.dialog.ask(choice.confirm, function () { self.chosen(choice); });
    } else {
      this.chosen(choice);
    }
  };

  Window.prototype.chosen = function (choice) {
    this.safe = null;
    dom.append(dom.empty(this.bar), this.button);
    this.button.focus();
    choice.run();
  };

  /** A press cancels what runs, and closes the window once nothing does. */
  Window.prototype.press = function () {
    if (this.safe) {
      this.safe();
      return;
    }
    if (!this.ended) {
      this.sync.cancel();
      return;
    }
    document.body.removeChild(this.shade);
    if (this.before && this.before.focus) { this.before.focus(); }
  };

  Window.prototype.end = function (succeeded) {
    this.ended = true;
    this.box.setAttribute('data-result', succeeded ? 'good' : 'bad');
    dom.append(dom.empty(this.button), text('close'));
    update();
    Tandril.views.updateErrors();
    LISTS.forEach(function (name) { page.refresh(name); });
  };

  function synchronise() {
    page.guard(function () {
      page.clear('divDetails');
      new Window().sync.start();
    });
  }

  Tandril.status = {
    start: function () {
      document.getElementById('mode').addEventListener('click', switchMode);
      var button = document.getElementById('sync');
      dom.append(button, [Tandril.icon('sync'), dom.make('span', {}, text('synchronise'))]);
      button.setAttribute('aria-label', text('synchronise'));
      button.addEventListener('click', synchronise);
      root.setInterval(update, 5 * MINUTE);
      followOthers();
    },
    showMode: showMode,
    update: update
  };
}(window));
