/*
 * Input that was not saved, kept per form in the browser's storage, so that it survives a closed window and a crash. A
 * draft is {time, values by control id}; the form's name, with its record's keys, is its key.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var text = function () { return Tandril.text.apply(null, arguments); };

  var PREFIX = 'tandril.draft.';
  var PAUSE = 300; /* milliseconds without a key before the input is kept */

  /* The form of a new record draws another number each time; its draft goes by what stands before that. */
  function keyOf(form) {
    return PREFIX + (form.isNew ? form.name.replace(/__\d+$/, '') + ' new' : form.name);
  }

  /* A browser may refuse its storage; then there are no drafts, and nothing else changes. */
  function withStorage(act) {
    try {
      return act(root.localStorage);
    } catch (refused) {
      return null;
    }
  }

  /** Keeps what is not saved of a form; false when the browser does not. */
  function keep(form) {
    if (!form.isChanged()) {
      drop(form);
      return true;
    }
    return withStorage(function (storage) {
      storage.setItem(keyOf(form), JSON.stringify({ time: Date.now(), values: form.snapshot() }));
      return true;
    }) === true;
  }

  function drop(form) {
    withStorage(function (storage) { storage.removeItem(keyOf(form)); });
  }

  function find(form) {
    return withStorage(function (storage) {
      var draft = JSON.parse(storage.getItem(keyOf(form)));
      return draft && draft.values && form.differs(draft.values) ? draft : null;
    });
  }

  function when(time) {
    return new Date(time).toLocaleString(Tandril.locale(), { dateStyle: 'medium', timeStyle: 'short' });
  }

  function offer(form, draft) {
    var note = dom.make('div', { 'class': 'draft', role: 'status' }, [
      dom.make('span', {}, text('draftFound', when(draft.time))),
      dom.make('button', { type: 'button', onclick: function () {
        form.restore(draft.values);
        end();
      } }, text('draftTake')),
      dom.make('button', { type: 'button', onclick: function () {
        drop(form);
        end();
      } }, text('draftDrop'))
    ]);
    function end() {
      if (note.parentNode) { note.parentNode.removeChild(note); }
      form.focusFirst();
    }
    form.element.insertBefore(note, form.element.firstChild);
  }

  /* The form that is watched, as long as it is shown. */
  var watched = null;

  function keepWatched() {
    return !watched || !document.body.contains(watched.element) || keep(watched);
  }

  /* A window that closes keeps the last keys, too. Where nothing can be kept the browser asks first. */
  root.addEventListener('pagehide', keepWatched);
  root.addEventListener('beforeunload', function (event) {
    if (keepWatched()) { return; }
    event.preventDefault();
    event.returnValue = '';
  });

  Tandril.drafts = {
    /** Keeps what is typed into a form from now on, and offers what was kept of it before. */
    watch: function (form) {
      var timer = null;
      var draft = find(form);
      watched = form;
      if (draft) { offer(form, draft); }
      function later() {
        root.clearTimeout(timer);
        timer = root.setTimeout(keepWatched, PAUSE);
      }
      form.element.addEventListener('input', later);
      form.element.addEventListener('change', later);
    },

    drop: drop
  };
}(window));
