/* The menu: which views there are, how they are grouped, and the call behind each. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var text = function () { return Tandril.text.apply(null, arguments); };

  function list(key, icon, method, args) {
    return { key: key, icon: icon, method: method, args: args || [] };
  }

  function act(key, icon, run) {
    return { key: key, icon: icon, run: run };
  }

  function create(kind) {
    return function () { Tandril.functions.newobject(kind, '', ''); };
  }

  function hours(key, icon, method, args) {
    var entry = list(key, icon, method, args);
    entry.headings = { method: 'getColumnHeadingsForHRA', args: [0, 'ccsocservclabr'] };
    return entry;
  }

  var MENU = [
    { key: 'groupActivities', entries: [
      list('myActivities', 'activity', 'MyActivities', ['']),
      list('activitiesOpen', 'pen', 'ViewActivities_W'),
      list('activitiesSent', 'sent', 'ViewActivities_SI'),
      list('completed', 'calendar', 'completedAgenda'),
      list('cancelled', 'cancel', 'canceledAgenda')
    ] },
    { key: 'groupOrders', entries: [
      list('orders', 'order', 'ListOrders'),
      list('ordersOpen', 'pen', 'ViewOrders_W'),
      list('ordersSent', 'sent', 'ViewOrders_SI')
    ] },
    { key: 'groupNew', entries: [
      act('newOrder', 'plus', create('1')),
      act('newActivity', 'plus', function () { Tandril.newActivity(); }),
      act('newMaterial', 'plus', function () { Tandril.newMaterial(); }),
      act('newHours', 'plus', create('4'))
    ] },
    { key: 'groupHours', folded: true, entries: [
      hours('hours', 'clock', 'ListHRALines', ['', '', '']),
      hours('hoursOpen', 'pen', 'ViewHra_W'),
      hours('hoursSent', 'sent', 'ViewHra_SI')
    ] },
    { key: 'groupCosts', folded: true, entries: [
      list('materialOpen', 'pen', 'ViewCostLines_W', ['Material']),
      list('labourOpen', 'pen', 'ViewCostLines_W', ['Labor']),
      list('otherOpen', 'pen', 'ViewCostLines_W', ['Other']),
      list('materialSent', 'sent', 'ViewCostLines_SI', ['Material']),
      list('labourSent', 'sent', 'ViewCostLines_SI', ['Labor']),
      list('otherSent', 'sent', 'ViewCostLines_SI', ['Other'])
    ] }
  ];

  /* The tables of master data: the code that lists one, and the code of its title. */
  var TABLES = [
    ['ITEM', 'SLBEU0195'], ['CSTP', 'SLBEU0193'], ['SKIT', 'SLBEU0203'], ['SCAR', 'SLBEU9199'], ['CWOC', 'SLBEU9200'],
    ['TASK', 'SLBEU0307'], ['CHLT', 'SLBEU9137'], ['CRAC', 'SLBEU0197'], ['CCFG', 'SLBUE9216'], ['PROB', 'SLBUE9217'],
    ['SOLU', 'SLBUE9218'], ['CADR', 'SLBUE9206'], ['CWAR', 'SLBUE9215'], ['UNIT', 'SLBUE9171'], ['REAS', 'SLBUE9213'],
    ['CPCP', 'SLBUE9211'], ['CSAR', 'SLBUE9198'], ['CCNT', 'SLBUE9208'], ['PRIO', 'SLBUE9212'], ['CROB', 'SLBUE9191']
  ];

  function open(entry) {
    closeMenu();
    Tandril.page.say('');
    if (entry.run) {
      entry.run();
      return;
    }
    mark(entry);
    showList(entry);
  }

  function showList(entry) {
    Tandril.page.show('divList', { method: entry.method, args: entry.args, title: text(entry.key), headings: entry.headings });
  }

  function openTable(entry) {
    closeMenu();
    mark(entry);
    Tandril.page.show('divList', { method: 'MasterData', args: [entry.code], title: entry.title, database: true });
  }

  function mark(entry) {
    dom.each(document.querySelectorAll('#menu button'), function (button) {
      if (entry && button === entry.button) { button.setAttribute('aria-current', 'page'); } else { button.removeAttribute('aria-current'); }
    });
  }

  function makeEntry(entry) {
    entry.button = dom.make('button', { type: 'button', 'data-view': entry.key, onclick: function () { (entry.code ? openTable : open)(entry); } },
      [Tandril.icon(entry.icon), dom.make('span', {}, entry.title || text(entry.key))]);
    return dom.make('li', {}, entry.button);
  }

  function makeGroup(group) {
    var heading = dom.make('h2', { id: group.key }, text(group.key));
    var entries = dom.make('ul', { 'aria-labelledby': group.key }, (group.entries || []).map(makeEntry));
    if (!group.folded) { return dom.make('div', { 'class': 'group' }, [heading, entries]); }
    return dom.make('details', { 'class': 'group' }, [dom.make('summary', {}, heading), entries]);
  }

  /* The titles of the tables come from the field mapper, so the group is filled when it is opened. */
  function makeTables() {
    var group = makeGroup({ key: 'groupMasterData', folded: true });
    var entries = group.querySelector('ul');
    group.addEventListener('toggle', function () {
      if (group.open && !entries.firstChild) { TABLES.forEach(function (table) { addTable(entries, table); }); }
    });
    return group;
  }

  function addTable(entries, table) {
    var entry = { code: table[0], key: table[0], icon: 'database', title: table[0] };
    entries.appendChild(makeEntry(entry));
    Tandril.page.quietly('GetI18NString', [table[1]], function (title) {
      if (!title) { return; }
      entry.title = title;
      dom.append(dom.empty(entry.button.lastChild), title);
    });
  }

  /* On a small screen the menu lies over the page: Escape and a press beside it close it. */
  function closeMenu() {
    document.body.classList.remove('menu-open');
    document.getElementById('menuToggle').setAttribute('aria-expanded', 'false');
  }

  function toggleMenu() {
    var isOpen = document.body.classList.toggle('menu-open');
    document.getElementById('menuToggle').setAttribute('aria-expanded', String(isOpen));
    if (isOpen) { document.querySelector('#menu button').focus(); }
  }

  function leaveMenu(event) {
    var toggle = document.getElementById('menuToggle');
    var isInside = document.getElementById('menu').contains(event.target) || toggle.contains(event.target);
    if (!document.body.classList.contains('menu-open')) { return; }
    if (event.key === 'Escape') {
      closeMenu();
      toggle.focus();
    } else if (event.type === 'click' && !isInside) {
      closeMenu();
    }
  }

  Tandril.views = {
    build: function () {
      var toggle = document.getElementById('menuToggle');
      toggle.appendChild(Tandril.icon('menu'));
      toggle.addEventListener('click', toggleMenu);
      document.addEventListener('click', leaveMenu);
      document.addEventListener('keydown', leaveMenu);
      dom.append(document.getElementById('menu'), MENU.map(makeGroup).concat(makeTables()));
    },

    /** Shows the view that the page starts with. */
    openFirst: function () {
      var entry = MENU[0].entries[0];
      mark(entry);
      showList(entry);
    },

    /** Marks the menu's entry of the view that is shown, none for null. */
    mark: mark,

    /** Leads from a view that was closed back to its entry in the menu. */
    leave: function () {
      var entry = document.querySelector('#menu [aria-current]');
      var toggle = document.getElementById('menuToggle');
      mark(null);
      (entry && entry.offsetParent && root.getComputedStyle(entry).visibility === 'visible' ? entry : toggle).focus();
    },

    /** Shows how many records the server refused. */
    updateErrors: function () {
      Tandril.page.quietly('ShowErrorPool', [], function (fragment) {
        var place = dom.empty(document.getElementById('errorPool'));
        var anchors = Tandril.panel.kidsOf(Tandril.fragment.read(fragment || ''), 'a');
        anchors.forEach(function (anchor) {
          dom.append(place, dom.make('button', {
            type: 'button', 'class': anchor.cls, onclick: function (event) { Tandril.page.run(anchor.call, event); }
          }, [Tandril.icon('error'), Tandril.panel.trimmed(anchor).replace(/^\*[\s\u00a0]*/, '').replace(/(\S)\(/, '$1 (')]));
        });
      });
    }
  };
}(window));
