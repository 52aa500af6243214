/* Starts the page: words, places, the component, the first run, the first view. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var page = Tandril.page;
  var text = function () { return Tandril.text.apply(null, arguments); };

  function putTexts() {
    var language = Tandril.chooseLanguage(root.navigator.languages || [root.navigator.language || 'en']);
    document.documentElement.setAttribute('lang', language);
    dom.each(document.querySelectorAll('[data-text]'), function (element) {
      dom.append(dom.empty(element), text(element.getAttribute('data-text')));
    });
    dom.each(document.querySelectorAll('[data-label]'), function (element) {
      element.setAttribute('aria-label', text(element.getAttribute('data-label')));
    });
    dom.append(document.getElementById('busy'), text('loading'));
  }

  /* ---- first run ---- */

  function fetchFrom(path, take, failed) {
    Tandril.transport.enterprise('GET', path, null, function (reply) {
      if (reply.ok && Tandril.answers.isExpected(path, reply.text)) {
        take(reply.text);
        return;
      }
      page.say(Tandril.answers.isAway(reply.status) ? text('noServer') : Tandril.answers.explain(path, reply), 'bad');
      failed();
    });
  }

  /** Without a field mapper nothing can be shown, so it comes first. */
  function fetchMapper(then, failed) {
    page.call('FMapperXMLExists', [], function (exists) {
      if (exists) { then(); return; }
      fetchFrom('fieldmapper', function (xml) {
        page.call('getFMapper', [xml, 'Yes'], then);
      }, failed);
    });
  }

  function fetchOrders(then, failed) {
    fetchFrom('orders', function (xml) {
      page.call('DownloadXml', [xml], function () {
        page.lastError(function (error) {
          if (!error) { Tandril.journal.noteSuccess(); }
          page.say(error || text('firstRunDone'), error ? 'bad' : 'good');
          then();
        });
      }, failed);
    }, failed);
  }

  /** Fetches what a new computer lacks: the field mapper, and the orders when the store has none. */
  function firstRun(then) {
    fetchMapper(function () {
      page.call('ListOrders', [], function (orders) {
        if (orders) { then(); return; }
        page.say(text('firstRun'));
        fetchOrders(then, then);
      }, then);
    }, then);
  }

  function showWork() {
    Tandril.status.showMode();
    Tandril.views.openFirst();
    Tandril.views.updateErrors();
    Tandril.status.update();
  }

  function start() {
    putTexts();
    page.start();
    Tandril.views.build();
    Tandril.status.start();
    Tandril.settings.start();
    Tandril.dialog.hold(document.getElementById('divZoomHype'), Tandril.closeZoom);
    Tandril.transport.open(function (answer) {
      if (!answer.ok) {
        page.say(answer.kind === 'lost' ? text('lost') : text('refusedCall', answer.text), 'bad');
        return;
      }
      page.call('Initialize', [], function (error) {
        if (error) { page.say(error, 'bad'); }
        Tandril.journal.load(function (isDamaged) {
          if (isDamaged) { page.say(text('journalDamaged'), 'bad'); }
          firstRun(showWork);
        });
      });
    });
  }

  root.addEventListener('beforeprint', function () { showWhole(true); });
  root.addEventListener('afterprint', function () { showWhole(false); });

  function showWhole(whole) {
    ['divList', 'divCosts', 'divCostLines'].forEach(function (name) {
      var shown = page.place(name).shown;
      if (shown && shown.list) { shown.list.showWhole(whole); }
    });
  }

  start();
}(window));
