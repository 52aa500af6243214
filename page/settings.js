/* The settings of this computer: which database of master data is used, and a delivered one to be unpacked. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var page = Tandril.page;
  var text = function () { return Tandril.text.apply(null, arguments); };

  /* A name in the folder of master data, never a path. */
  var PLAIN_NAME = /^[^\\\/:*?"<>|\u0000-\u001f]+$/;

  /* The table whose listing shows whether the database is there, and the component's text for one that is not. */
  var PROBE = 'PRIO';
  var MISSING = 'SLBEU0308';

  function without(ending, name) {
    var plain = name.trim();
    return plain.slice(-ending.length).toLowerCase() === ending ? plain.slice(0, -ending.length) : plain;
  }

  function Settings() {
    var self = this;
    this.before = document.activeElement;
    this.current = dom.make('strong', { id: 'currentDatabase' }, '');
    this.said = dom.make('p', { 'class': 'said', role: 'status' });
    this.box = dom.make('div', { 'class': 'question settings', role: 'dialog', 'aria-modal': 'true', 'aria-labelledby': 'settingsTitle' }, [
      dom.make('h2', { id: 'settingsTitle' }, text('settings')),
      dom.make('p', {}, [text('databaseNow') + ' ', this.current]),
      this.makeLine('database', text('databaseName'), text('databaseUse'), function (name) { self.choose(name); }),
      this.makeLine('archive', text('archiveName'), text('archiveStart'), function (name) { self.explode(name); }),
      this.said,
      dom.make('div', { 'class': 'bar' }, dom.make('button', { type: 'button', onclick: function () { self.close(); } }, text('close')))
    ]);
    this.shade = dom.make('div', { 'class': 'shade' }, this.box);
    Tandril.dialog.hold(this.shade, function () { self.close(); });
    document.body.appendChild(this.shade);
    document.getElementById('database').focus();
    this.showCurrent();
  }

  Settings.prototype.makeLine = function (id, label, button, act) {
    var input = dom.make('input', { type: 'text', id: id, autocomplete: 'off', onkeydown: function (event) {
      if (event.key === 'Enter') { act(input.value); }
    } });
    return dom.make('div', { 'class': 'line' }, [
      dom.make('label', { 'for': id }, label), input,
      dom.make('button', { type: 'button', onclick: function () { act(input.value); } }, button)
    ]);
  };

  Settings.prototype.say = function (words, isBad) {
    this.said.className = 'said' + (isBad ? ' bad' : '');
    dom.append(dom.empty(this.said), words);
  };

  Settings.prototype.close = function () {
    document.body.removeChild(this.shade);
    if (this.before && this.before.focus) { this.before.focus(); }
  };

  Settings.prototype.showCurrent = function () {
    var self = this;
    page.call('GetVariable', ['Currentmdb'], function (name) {
      dom.append(dom.empty(self.current), name || text('databaseNone'));
    });
  };

  /** The name without its ending, or null, with a word about it, when it is no plain file name. */
  Settings.prototype.read = function (ending, name) {
    var plain = without(ending, name);
    if (PLAIN_NAME.test(plain)) { return plain; }
    this.say(text('badName'), true);
    return null;
  };

  /* The name goes into the settings without its ending and into the data source with it. */
  Settings.prototype.choose = function (name) {
    var self = this;
    var plain = this.read('.mdb', name);
    if (plain === null) { return; }
    page.call('SetCurrentmdb', [plain], function () {
      page.call('SetODBCDataBase', [plain + '.mdb'], function () {
        self.showCurrent();
        self.look(plain);
      });
    });
  };

  /** Says whether the chosen database is in the folder and can be read. */
  Settings.prototype.look = function (name) {
    var self = this;
    function tell(isThere) { self.say(text(isThere ? 'databaseChosen' : 'databaseMissing', name), !isThere); }
    function missing() { tell(false); }
    page.quietly('GetI18NString', [MISSING], function (absent) {
      page.quietly('OpenDataBase', [], function () {
        page.quietly('MasterData', [PROBE], function (listing) { tell(Boolean(listing) && listing !== absent); }, missing);
        page.quietly('CloseDataBase', [], function () {});
      }, missing);
    }, missing);
  };

  /* The component shows a message when it cannot start an archive. The host passes it on; without it, it is on the screen. */
  Settings.prototype.explode = function (name) {
    var self = this;
    var plain = this.read('.exe', name);
    if (plain === null) { return; }
    Tandril.transport.messages(0, function (before) {
      var last = before.length ? before[before.length - 1].number : 0;
      page.call('ExplodeZip', [plain], function () {
        Tandril.transport.messages(last, function (shown) { self.sayStarted(plain, shown); });
      });
    });
  };

  Settings.prototype.sayStarted = function (name, messages) {
    if (messages.length) {
      this.say(messages.map(function (message) {
        return (message.title ? message.title + ': ' : '') + message.text.replace(/\s+/g, ' ').trim();
      }).join(' '), true);
    } else {
      this.say(text(Tandril.transport.isDirect() ? 'archiveStartedUnseen' : 'archiveStarted', name));
    }
  };

  Tandril.settings = {
    start: function () {
      var button = document.getElementById('settings');
      button.appendChild(Tandril.icon('settings'));
      button.setAttribute('title', text('settings'));
      button.addEventListener('click', function () { new Settings(); });
    }
  };
}(window));
