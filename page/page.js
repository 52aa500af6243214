/*
 * The page's places (the containers that fragments go into), its message line, and the way from a call of a fragment to
 * the function that it names.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var text = function () { return Tandril.text.apply(null, arguments); };

  var PLACES = ['divList', 'divDetails', 'divCosts', 'divCostLines', 'divCostHeader', 'divZoomHype'];
  var PATIENCE = 400; /* milliseconds before a running call is shown */

  var places = {};
  var calls = 0;
  var LULL = 600; /* milliseconds without a key before the result of a filter is read out */
  var lull = null;

  /*
   * A place: { element, view: {method, args, title}, asked: the view that has yet to come, state of its list, shown: what
   * render made of it }.
   */
  function findPlaces() {
    PLACES.forEach(function (name) {
      places[name] = { name: name, element: document.getElementById(name), view: null, asked: null, state: {}, shown: null };
    });
  }

  /* ---- messages ---- */

  var message;
  var busy;

  /** Says something in the message line; kind is "good", "bad" or "" for plain news. */
  function say(words, kind) {
    message = message || document.getElementById('message');
    message.className = 'message ' + (words ? kind || 'news' : '');
    dom.append(dom.empty(message), words ? [
      dom.make('span', {}, words),
      dom.make('button', { type: 'button', 'class': 'icon-button', 'aria-label': text('close'), onclick: function () { say(''); } },
        Tandril.icon('close'))
    ] : '');
  }

  function countCalls(step) {
    busy = busy || document.getElementById('busy');
    calls += step;
    root.setTimeout(function () { busy.hidden = calls === 0; }, calls ? PATIENCE : 0);
  }

  function explain(method, answer) {
    switch (answer.kind) {
      case 'lost': return text('lost');
      case 'fault': return text('fault', method, answer.text);
      case 'invalid': return text('invalid', method, answer.text);
      default: return text('refusedCall', answer.text);
    }
  }

  /** Calls the component; `done(result, out)` runs only when it answered, otherwise the page says what went wrong. */
  function call(method, args, done, failed) {
    quietly(method, args, done, function (answer) {
      say(explain(method, answer), 'bad');
      if (failed) { failed(answer); }
    });
  }

  /** Calls the component without a word about a failure, for what is only nice to know. */
  function quietly(method, args, done, failed) {
    countCalls(1);
    Tandril.transport.call(method, args, function (answer) {
      countCalls(-1);
      if (answer.ok) {
        done(answer.result, answer.out);
      } else if (failed) {
        failed(answer);
      }
    });
  }

  /** The error text of the last call, "" when it had none; both "1" and "" stand for none. */
  function lastError(done, failed) {
    call('Get_Error', [], function (result) { done(result === '1' || !result ? '' : result); }, failed);
  }

  /* ---- showing fragments ---- */

  function run(request, event) {
    var known = Tandril.calls.isKnown(request.name);
    var act = known && Tandril.functions[request.name];
    if (!act) { return; }
    say('');
    act.apply(null, request.args.map(function (arg) {
      return arg === Tandril.calls.CHOSEN ? event.target.value : arg;
    }));
  }

  /* A call's arguments are the keys of the record that its fragment is about, with other words among them. */
  function keysOf(args) {
    return args.filter(function (arg) { return typeof arg === 'string' && arg !== ''; });
  }

  function put(place, fragment, view, head) {
    place.element.classList.remove('minimized');
    var title = view.title;
    place.shown = Tandril.render(place.element, fragment, {
      run: run, state: place.state, title: title, subtitle: view.subtitle, head: head, keys: keysOf(view.args),
      found: function (counts) { announceFound(title, counts); }
    });
  }

  function putNote(place, title, words) {
    dom.forgetIds();
    dom.append(dom.empty(place.element), dom.make('div', { 'class': 'panel' }, [
      dom.make('div', { 'class': 'titles' }, dom.make('h2', { tabindex: -1 }, title)),
      dom.make('p', { 'class': 'note empty' }, words)
    ]));
    place.shown = null;
  }

  function sameView(a, b) {
    return Boolean(a) && a.method === b.method && JSON.stringify(a.args) === JSON.stringify(b.args);
  }

  function focusTitle(place) {
    var title = place.element.querySelector('h2');
    if (title) { title.focus(); }
  }

  function announce(place, title) {
    var list = place.shown && place.shown.list;
    if (list) { list.whenWhole(function () { read(text('rowsShown', title, list.counts().all)); }); }
  }

  /** Has something read out that eyes see by themselves. */
  function read(words) {
    dom.append(dom.empty(document.getElementById('news')), words);
  }

  function announceFound(title, counts) {
    root.clearTimeout(lull);
    lull = root.setTimeout(function () { read(text('rowsShown', title, text('countOf', counts.shown, counts.all))); }, LULL);
  }

  /** The headings of a list that comes without: what view.headings calls, its last one moved behind the first. */
  function withHeadings(view, done, failed) {
    if (!view.headings) {
      done([]);
      return;
    }
    call(view.headings.method, view.headings.args, function (fragment) {
      var list = Tandril.panel.read(fragment || '').list;
      var head = list ? list.head : [];
      done(head.length > 1 ? [head[0], head[head.length - 1]].concat(head.slice(1, -1)) : head);
    }, failed);
  }

  /**
   * Shows what a method returns. view: {method, args, title, subtitle, headings, database, focus, quiet, keeps}. A view of
   * the `database` is called while the data source is open; keeps() tells whether the place has to stay as it is. An empty
   * result shows the component's error text instead; in every place but the list it goes into the message line, unless the
   * view is quiet, and the place stays as it was. What comes after the place was cleared or another view was asked for is
   * not shown.
   */
  function show(name, view, done) {
    var place = places[name];
    function failed() { arrive(place, view); }
    function ask() {
      withHeadings(view, function (head) { showWith(place, view, head, done); }, failed);
    }
    place.asked = view;
    if (view.database) { withDatabase(ask, failed); } else { ask(); }
  }

  function isWanted(place, view) {
    return sameView(place.asked || place.view, view);
  }

  function arrive(place, view) {
    if (place.asked === view) { place.asked = null; }
  }

  /** Runs `ask`, which makes one call, between opening and closing the data source; calls are made in order. */
  function withDatabase(ask, failed) {
    call('OpenDataBase', [], function () {
      ask();
      quietly('CloseDataBase', [], function () {});
    }, failed);
  }

  function showWith(place, view, head, done) {
    call(view.method, view.args, function (fragment) {
      if (!isWanted(place, view)) { return; }
      if (!fragment) {
        showError(place, view);
        return;
      }
      arrive(place, view);
      if (view.keeps && view.keeps()) { return; }
      if (!sameView(place.view, view)) { place.state = {}; }
      var hadFocus = view.again && place.element.contains(document.activeElement);
      place.view = view;
      put(place, fragment, view, head);
      if (!view.again) { announce(place, view.title); }
      if (view.focus) { focusTitle(place); }
      if (hadFocus && place.shown.list) { place.shown.list.takeFocus(); }
      if (done) { done(place.shown); }
    }, function () { arrive(place, view); });
  }

  function showError(place, view) {
    lastError(function (error) {
      if (!isWanted(place, view)) { return; }
      arrive(place, view);
      if (place.name === 'divList') {
        place.view = view;
        place.state = {};
        putNote(place, view.title, error || text('nothingHere'));
      } else if (!view.quiet) {
        say(error || text('nothingHere'), error ? 'bad' : 'news');
      }
    }, function () { arrive(place, view); });
  }

  /**
   * Makes the call of a place's view again and keeps filter, order, position and focus; then done(shown). A view that has
   * yet to come is called after all calls before it anyway.
   */
  function refresh(name, done) {
    var asked = places[name].asked;
    var view = places[name].view;
    if (!view || asked && !sameView(asked, view)) { return; }
    show(name, {
      method: view.method, args: view.args, title: view.title, subtitle: view.subtitle, headings: view.headings,
      database: view.database, again: true
    }, done);
  }

  function clear(name) {
    var place = places[name];
    dom.empty(place.element);
    place.view = null;
    place.asked = null;
    place.shown = null;
  }

  /** Runs `act` at once, or after the question when the form in the details holds changes that are not saved. */
  function guard(act) {
    var form = places.divDetails.shown && places.divDetails.shown.form;
    if (!form || !form.isChanged()) {
      act();
      return;
    }
    Tandril.dialog.ask({
      title: text('confirmDiscard'), text: text('confirmDiscardText'), yes: text('yesDiscard'), danger: true
    }, function () {
      Tandril.drafts.drop(form);
      act();
    });
  }

  Tandril.page = {
    start: findPlaces,
    place: function (name) { return places.hasOwnProperty(name) ? places[name] : null; },
    say: say, explain: explain, call: call, quietly: quietly, lastError: lastError, run: run,
    show: show, refresh: refresh, clear: clear, guard: guard, focusTitle: focusTitle
  };
}(window));
