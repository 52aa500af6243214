/* The menu: which views there are, how they are grouped, and the call behind each. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var text = function () { return Tandril.text.apply(null, arguments); };

  function list(key, icon, method, args) {
    return { key: key, icon: icon, method: method, args: args || [] };
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
    ] }
  ];

  function open(entry) {
    mark(entry);
    closeMenu();
    Tandril.page.show('divList', { method: entry.method, args: entry.args, title: text(entry.key) });
  }

  function mark(entry) {
    dom.each(document.querySelectorAll('#menu button'), function (button) {
      if (button === entry.button) { button.setAttribute('aria-current', 'page'); } else { button.removeAttribute('aria-current'); }
    });
  }

  function makeEntry(entry) {
    entry.button = dom.make('button', { type: 'button', 'data-view': entry.key, onclick: function () { open(entry); } },
      [Tandril.icon(entry.icon), dom.make('span', {}, text(entry.key))]);
    return dom.make('li', {}, entry.button);
  }

  function makeGroup(group) {
    return dom.make('div', { 'class': 'group' }, [
      dom.make('h2', { id: group.key }, text(group.key)),
      dom.make('ul', { 'aria-labelledby': group.key }, group.entries.map(makeEntry))
    ]);
  }

  function closeMenu() {
    document.body.classList.remove('menu-open');
    document.getElementById('menuToggle').setAttribute('aria-expanded', 'false');
  }

  function toggleMenu() {
    var isOpen = document.body.classList.toggle('menu-open');
    document.getElementById('menuToggle').setAttribute('aria-expanded', String(isOpen));
  }

  Tandril.views = {
    build: function () {
      var toggle = document.getElementById('menuToggle');
      toggle.appendChild(Tandril.icon('menu'));
      toggle.addEventListener('click', toggleMenu);
      dom.append(document.getElementById('menu'), MENU.map(makeGroup));
    },

    /** Shows the view that the page starts with. */
    openFirst: function () {
      open(MENU[0].entries[0]);
    },

    /** Shows how many records the server refused. */
    updateErrors: function () {
      Tandril.page.call('ShowErrorPool', [], function (fragment) {
        var place = dom.empty(document.getElementById('errorPool'));
        var anchors = Tandril.panel.kidsOf(Tandril.fragment.read(fragment || ''), 'a');
        anchors.forEach(function (anchor) {
          dom.append(place, dom.make('button', {
            type: 'button', 'class': anchor.cls, onclick: function (event) { Tandril.page.run(anchor.call, event); }
          }, [Tandril.icon('error'), Tandril.panel.trimmed(anchor).replace(/^\*[\s\u00a0]*/, '')]));
        });
      });
    }
  };
}(window));
