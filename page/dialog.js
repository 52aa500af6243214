/* Dialogs: one that asks before something is lost, the keyboard inside of windows, and texts given away as files. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var FOCUSABLE = 'button, input, select, textarea, [tabindex="0"]';

  function keepInside(element, event) {
    var items = Array.prototype.filter.call(element.querySelectorAll(FOCUSABLE), function (item) {
      return !item.disabled && item.tabIndex >= 0 && item.offsetParent !== null;
    });
    if (!items.length) { return; }
    var edge = event.shiftKey ? items[0] : items[items.length - 1];
    if (document.activeElement === edge || document.activeElement === element) {
      event.preventDefault();
      items[event.shiftKey ? items.length - 1 : 0].focus();
    }
  }

  /** Makes `element` hold the keyboard while it is shown; Escape calls `leave`. */
  function hold(element, leave) {
    element.addEventListener('keydown', function (event) {
      if (event.key === 'Tab') { keepInside(element, event); }
      if (event.key === 'Escape') {
        event.stopPropagation();
        leave();
      }
    });
  }

  /** Asks; `act` runs when the answer is yes. Options: title, text, yes, danger. */
  function ask(options, act) {
    var before = document.activeElement;
    function end(answer) {
      document.body.removeChild(shade);
      if (before && before.focus) { before.focus(); }
      if (answer) { act(); }
    }
    var yes = dom.make('button', {
      type: 'button', 'class': options.danger ? 'danger solid' : 'primary', onclick: function () { end(true); }
    }, options.yes);
    var no = dom.make('button', { type: 'button', onclick: function () { end(false); } }, Tandril.text('no'));
    var box = dom.make('div', { 'class': 'question', role: 'alertdialog', 'aria-modal': 'true', 'aria-labelledby': 'questionTitle',
      'aria-describedby': 'questionText' }, [
      dom.make('h2', { id: 'questionTitle' }, options.title),
      dom.make('p', { id: 'questionText' }, options.text),
      dom.make('div', { 'class': 'bar' }, [no, yes])
    ]);
    var shade = dom.make('div', { 'class': 'shade' }, box);
    hold(shade, function () { end(false); });
    document.body.appendChild(shade);
    no.focus();
  }

  /** Gives the engineer a text as a file of that name. */
  function saveText(name, words) {
    var file = new root.Blob([words], { type: 'text/xml' });
    if (root.navigator.msSaveOrOpenBlob) {
      root.navigator.msSaveOrOpenBlob(file, name);
      return;
    }
    var link = dom.make('a', { href: root.URL.createObjectURL(file), download: name, hidden: true });
    document.body.appendChild(link);
    link.click();
    document.body.removeChild(link);
    root.setTimeout(function () { root.URL.revokeObjectURL(link.href); }, 60000);
  }

  /** Whether a window lies over the page. */
  function isOpen() {
    return document.querySelector('.shade, .dialog:not(:empty)') !== null;
  }

  Tandril.dialog = { hold: hold, ask: ask, isOpen: isOpen, saveText: saveText };
}(window));
