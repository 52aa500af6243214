/* Gives a panel (see panel.js) its shape in the document: title bar, links, facts, list, form, buttons. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var text = function () { return Tandril.text.apply(null, arguments); };

  /* Milliseconds to read a fragment before its first rows are shown, and at a time after that. */
  var FIRST = 30;
  var PIECE = 20;

  function iconButton(icon, label, act) {
    return dom.make('button', { type: 'button', 'class': 'icon-button', 'aria-label': label, title: label, onclick: act },
      Tandril.icon(icon));
  }

  function makeTitle(panel, options, list) {
    var heading = dom.make('h2', { tabindex: -1 }, [
      panel.title || options.title, options.subtitle ? dom.make('small', {}, options.subtitle) : null
    ]);
    var bar = dom.make('div', { 'class': 'titles' }, heading);
    if (list) { addFilter(bar, list, options.state, options.found || function () {}); }
    if (panel.minimize) {
      bar.appendChild(iconButton('minimize', text('minimize'), function (event) {
        options.run({ name: 'minimize', args: [panel.place] }, event);
      }));
    }
    if (panel.place) {
      bar.appendChild(iconButton('close', text('close'), function (event) {
        options.run({ name: 'winclose', args: [panel.place] }, event);
      }));
    }
    return bar;
  }

  function addFilter(bar, list, state, found) {
    var count = dom.make('span', { 'class': 'count' });
    list.onchange = function () {
      var counts = list.counts();
      dom.append(dom.empty(count), counts.shown === counts.all ? counts.all : text('countOf', counts.shown, counts.all));
    };
    list.onchange();
    var input = dom.make('input', {
      type: 'search', placeholder: text('filter'), 'aria-label': text('filter'), oninput: function () {
        list.filter(input.value);
        found(list.counts());
      }
    });
    input.value = state.filter || '';
    dom.append(bar, [count, dom.make('span', { 'class': 'filter' }, [Tandril.icon('search'), input])]);
  }

  function makeLinks(rows, run) {
    return dom.make('div', { 'class': 'hyperbutton' }, rows.map(function (anchors) {
      return dom.make('div', { 'class': 'pair' }, anchors.map(function (anchor) {
        var creates = anchor.call.name === 'newobject';
        return dom.make('button', {
          type: 'button', 'class': creates ? 'create' : 'show', onclick: function (event) { run(anchor.call, event); }
        }, [creates ? Tandril.icon('plus') : null, Tandril.panel.trimmed(anchor)]);
      }));
    }));
  }

  function makeFact(cells, run) {
    var value = dom.make('dd');
    cells[1].kids.forEach(function (kid) {
      if (typeof kid === 'string') { dom.append(value, kid.replace(/\u00a0/g, ' ').trim()); }
      if (kid.tag === 'select') { value.appendChild(makeChooser(kid, cells[0], run)); }
    });
    return [dom.make('dt', {}, Tandril.panel.trimmed(cells[0])), value];
  }

  function makeChooser(node, labelCell, run) {
    var select = dom.make('select', {
      'aria-label': Tandril.panel.trimmed(labelCell), onchange: node.call && function (event) { run(node.call, event); }
    });
    Tandril.Form.fillOptions(select, Tandril.panel.kidsOf(node, 'option').map(function (option) {
      return { value: option.value, text: Tandril.panel.trimmed(option), selected: option.selected };
    }));
    return select;
  }

  function makeFacts(facts, run) {
    return dom.make('dl', { 'class': 'facts' }, facts.reduce(function (all, cells) {
      return all.concat(makeFact(cells, run));
    }, []));
  }

  var BUTTON_CLASSES = { saveObject: 'primary', CreateActivity: 'primary', deleteObject: 'danger' };
  var BUTTON_IDS = { saveObject: 'btnSave', CreateActivity: 'btnSave', deleteObject: 'btnDelete' };

  function makeButtons(buttons, run) {
    var complaint = dom.make('p', { 'class': 'complaint', role: 'alert' });
    return dom.make('div', { 'class': 'bar' }, [complaint].concat(buttons.map(function (button) {
      var label = button.value.trim();
      var saves = BUTTON_IDS[button.call.name] === 'btnSave';
      return dom.make('button', {
        type: 'button', id: BUTTON_IDS[button.call.name] || null, 'class': BUTTON_CLASSES[button.call.name] || null,
        title: saves ? text('saveKey', label) : null, 'aria-keyshortcuts': saves ? 'Control+S' : null,
        onclick: function (event) { run(button.call, event); }
      }, label);
    })));
  }

  function watch(form, buttons) {
    form.isNew = buttons.some(function (button) {
      return button.call.name === 'CreateActivity' || button.call.name === 'saveObject' && button.call.args[4] === 'New';
    });
    Tandril.drafts.watch(form);
  }

  /** Reads the rest of a long list piece by piece, as long as it is shown. */
  function readOn(panel, list) {
    root.setTimeout(function () {
      if (!document.body.contains(list.element)) { return; }
      var more = panel.more(PIECE);
      list.grow(more.rows, more.isLast);
      if (!more.isLast) { readOn(panel, list); }
    }, 0);
  }

  /**
   * Fills `place` with the panel of the fragment `fragment`. Options: run(call, event) for the calls of the fragment,
   * found(counts) for what a filter leaves, state of the place's list, title for a fragment without one, subtitle, head for a list without headings, keys of
   * the records that the fragment is about. Returns { panel, list, form }.
   */
  Tandril.render = function (place, fragment, options) {
    var panel = Tandril.panel.begin(fragment, FIRST, options.keys);
    var title = panel.title || options.title;
    if (panel.list && options.head && !panel.list.head.length) { panel.list.head = options.head; }
    dom.forgetIds();
    dom.empty(place);
    var list = panel.list && new Tandril.List(panel.list, {
      state: options.state, run: options.run, label: title, growing: Boolean(panel.more)
    });
    var form = panel.form && new Tandril.Form(panel.form, { run: options.run, label: title });
    var buttons = panel.buttons.concat(form ? form.buttons : []);
    var body = dom.make('div', { 'class': 'panel-body' }, [
      panel.links.length ? makeLinks(panel.links, options.run) : null,
      panel.facts.length ? makeFacts(panel.facts, options.run) : null,
      list && list.element,
      form && form.element,
      panel.notes.length ? dom.make('p', { 'class': 'note' }, panel.notes.join(' ')) : null
    ]);
    dom.append(place, dom.make('div', { 'class': 'panel' }, [
      makeTitle(panel, options, list), body, buttons.length ? makeButtons(buttons, options.run) : null
    ]));
    if (list) { list.restore(); }
    if (form) { watch(form, buttons); }
    if (panel.more) { readOn(panel, list); }
    return { panel: panel, list: list, form: form };
  };
}(window));
