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

  function keep(form) {
    if (!form.isChanged()) {
      drop(form);
      return;
    }
    withStorage(function (storage) {
      storage.setItem(keyOf(form), JSON.stringify({ time: Date.now(), values: form.snapshot() }));
    });
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

  function offer(form, draft) {
    var note = dom.make('div', { 'class': 'draft', role: 'status' }, [
      dom.make('span', {}, text('draftFound', new Date(draft.time).toLocaleString())),
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
    }
    form.element.insertBefore(note, form.element.firstChild);
  }

  Tandril.drafts = {
    /** Keeps what is typed into a form from now on, and offers what was kept of it before. */
    watch: function (form) {
      var timer = null;
      var draft = find(form);
      if (draft) { offer(form, draft); }
      function later() {
        root.clearTimeout(timer);
        timer = root.setTimeout(function () {
          if (document.body.contains(form.element)) { keep(form); }
        }, PAUSE);
      }
      form.element.addEventListener('input', later);
      form.element.addEventListener('change', later);
    },

    drop: drop
  };
}(window));
