/* What the server said about a refused record, shown above the record's form, with the ways to settle it. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var page = Tandril.page;
  var text = function () { return Tandril.text.apply(null, arguments); };

  /* By the kind of a record: the word of its section, and the word by which deleteNode finds a cost line. */
  var WORDS = { '1': 'order', '2': 'activity', '3': 'material', '4': 'labor', '5': 'other' };
  var COST_TYPES = { '3': 'material', '4': 'labor', '5': 'other' };

  /** The server's words about the record that showdetails opens with these arguments. */
  function reasonsIn(fragment, args) {
    var list = Tandril.panel.read(fragment || '').list;
    return (list ? list.rows : []).map(function (node) {
      return new Tandril.rows.Row(node).look();
    }).filter(function (row) {
      return row.call && row.call.args.slice(0, 4).join('\n') === args.slice(0, 4).join('\n');
    }).map(function (row) { return row.texts[1] || ''; });
  }

  /** A record of this computer has a number of its own; the server's records have the server's. */
  function isLocal(args) {
    return (args[3] || args[2] || args[1]).charAt(0) === '_';
  }

  /** An edit of no field marks the record as changed again and takes the refusal away. */
  function sendAgain(args) {
    page.guard(function () {
      var key = { order: args[1], activity: args[2], line: args[3] };
      page.call('updatexml', [Tandril.records.xml(WORDS[args[0]], key, [], false)], function (error) {
        if (error) {
          page.say(error, 'bad');
          return;
        }
        page.clear('divDetails');
        Tandril.refreshLists();
        Tandril.functions.showdetails(args[0], args[1], args[2], args[3], '2');
        page.say(text('goesOutAgain'), 'good');
      });
    });
  }

  /**
   * Takes the record off this computer, and the refusal with it. The component has no way to undo a change of a server's
   * record; without the changed one the next download brings the server's own.
   */
  function discard(args) {
    Tandril.dialog.ask({
      title: text('confirmRefusal'), text: text(isLocal(args) ? 'confirmRefusalLocal' : 'confirmRefusalServer'),
      yes: text('yesDiscard'), danger: true
    }, function () {
      page.call('deleteNode', [args[1], args[2], args[3], COST_TYPES[args[0]] || ''], function () {
        var form = page.place('divDetails').shown;
        if (form && form.form) { Tandril.drafts.drop(form.form); }
        Tandril.closeRecord();
        page.say(text('refusalDiscarded'), 'good');
        Tandril.refreshLists(true);
      });
    });
  }

  function makeNote(reasons, args) {
    return dom.make('div', { 'class': 'refusal', role: 'group', 'aria-label': text('refusedBecause') }, [
      dom.make('strong', {}, text('refusedBecause')),
      dom.make('ul', {}, reasons.map(function (reason) { return dom.make('li', {}, reason); })),
      dom.make('p', {}, text('refusedAdvice')),
      dom.make('div', { 'class': 'choices' }, [
        dom.make('button', { type: 'button', 'class': 'again', onclick: function () { sendAgain(args); } }, text('sendAgain')),
        dom.make('button', { type: 'button', 'class': 'discard', onclick: function () { discard(args); } }, text('discardRecord'))
      ])
    ]);
  }

  Tandril.refusals = {
    /** Shows above the record in the details what the server said about it, if it refused it. */
    show: function (args) {
      var view = page.place('divDetails').view;
      if (!document.getElementById('errorPool').firstChild) { return; }
      page.quietly('ShowErrorList', [], function (fragment) {
        var place = page.place('divDetails');
        var reasons = reasonsIn(fragment, args);
        var body = place.element.querySelector('.panel-body');
        if (place.view === view && body && reasons.length) { body.insertBefore(makeNote(reasons, args), body.firstChild); }
      });
    }
  };
}(window));
