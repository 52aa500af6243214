/*
 * The window in which a date and a time are picked: a month of days, hour and minute, and "now". It writes the texts that
 * the forms expect, mm/dd/yyyy and hhmm, in whatever language the page is.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var text = function () { return Tandril.text.apply(null, arguments); };

  var WEEK = 7;
  var WEEKS = 6; /* rows of days, so that the window keeps its size */
  var MINUTES = 5; /* step of the minutes on offer; the minute of the field is there, too */
  var SUNDAY = new Date(2023, 0, 1);

  function two(number) {
    return (number < 10 ? '0' : '') + number;
  }

  function plusDays(day, count) {
    return new Date(day.getFullYear(), day.getMonth(), day.getDate() + count);
  }

  /** The same day of another month, or that month's last. */
  function plusMonths(day, count) {
    var last = new Date(day.getFullYear(), day.getMonth() + count + 1, 0);
    return new Date(last.getFullYear(), last.getMonth(), Math.min(day.getDate(), last.getDate()));
  }

  function words(day, parts) {
    return day.toLocaleDateString(Tandril.locale(), parts);
  }

  /** The weekday that weeks begin with where the page's language is spoken: 0 for Sunday, 1 for Monday. */
  function firstWeekday() {
    var region = root.Intl && root.Intl.Locale ? new root.Intl.Locale(Tandril.locale()) : {};
    var week = region.getWeekInfo ? region.getWeekInfo() : region.weekInfo;
    return week ? week.firstDay % WEEK : 1;
  }

  function Picker(options) {
    var stamp = Tandril.stamps.readDate(options.date.value);
    this.date = options.date;
    this.time = options.time;
    this.day = stamp ? new Date(Number(stamp.slice(0, 4)), Number(stamp.slice(4, 6)) - 1, Number(stamp.slice(6, 8))) : new Date();
    this.weekStart = firstWeekday();
    this.build(options.label);
    this.showMonth();
    this.focusDay();
  }

  /* ---- the window ---- */

  Picker.prototype.build = function (label) {
    var self = this;
    this.month = dom.make('strong', { id: 'pickerMonth', 'aria-live': 'polite' });
    this.days = dom.make('tbody', {
      onkeydown: function (event) { self.press(event); }, onclick: function (event) { self.click(event); }
    });
    this.shade = dom.make('div', { 'class': 'shade' }, dom.make('div', {
      'class': 'question picker', role: 'dialog', 'aria-modal': 'true', 'aria-labelledby': 'pickerTitle'
    }, [
      dom.make('h2', { id: 'pickerTitle' }, label), this.makeMonthBar(),
      dom.make('table', { 'class': 'days', role: 'grid', 'aria-labelledby': 'pickerMonth' }, [this.makeWeekdays(), this.days]),
      this.time && this.makeTime(), this.makeButtons()
    ]));
    Tandril.dialog.hold(this.shade, function () { self.close(); });
    document.body.appendChild(this.shade);
  };

  Picker.prototype.makeMonthBar = function () {
    var self = this;
    function step(icon, label, count) {
      return dom.make('button', { type: 'button', 'class': 'icon-button', 'aria-label': label, title: label, onclick: function () {
        self.day = plusMonths(self.day, count);
        self.showMonth();
      } }, Tandril.icon(icon));
    }
    return dom.make('div', { 'class': 'month' }, [step('left', text('monthBefore'), -1), this.month, step('right', text('monthAfter'), 1)]);
  };

  Picker.prototype.makeWeekdays = function () {
    var row = dom.make('tr');
    for (var i = 0; i < WEEK; i++) {
      var day = plusDays(SUNDAY, this.weekStart + i);
      row.appendChild(dom.make('th', { scope: 'col', abbr: words(day, { weekday: 'long' }) }, words(day, { weekday: 'short' })));
    }
    return dom.make('thead', {}, row);
  };

  function makeSelect(label, values, chosen) {
    var select = dom.make('select', { 'aria-label': label });
    Tandril.Form.fillOptions(select, values.map(function (value) {
      return { value: value, text: value || '\u2013', selected: value === chosen };
    }));
    return select;
  }

  function numbers(end, step) {
    var all = [];
    for (var i = 0; i < end; i += step) { all.push(two(i)); }
    return all;
  }

  Picker.prototype.makeTime = function () {
    var stamp = this.time.value.trim() ? Tandril.stamps.readTime(this.time.value) : null;
    var minute = stamp ? stamp.slice(2, 4) : '00';
    var minutes = numbers(60, MINUTES);
    if (minutes.indexOf(minute) < 0) { minutes = minutes.concat(minute).sort(); }
    this.hour = makeSelect(text('hour'), [''].concat(numbers(24, 1)), stamp ? stamp.slice(0, 2) : '');
    this.minute = makeSelect(text('minute'), minutes, minute);
    return dom.make('div', { 'class': 'clock' }, [Tandril.icon('clock'), this.hour, dom.make('span', { 'aria-hidden': 'true' }, ':'), this.minute]);
  };

  Picker.prototype.makeButtons = function () {
    var self = this;
    return dom.make('div', { 'class': 'bar' }, [
      dom.make('button', { type: 'button', 'class': 'now', onclick: function () { self.takeNow(); } }, text('now')),
      dom.make('button', { type: 'button', onclick: function () { self.close(); } }, text('no')),
      dom.make('button', { type: 'button', 'class': 'primary', onclick: function () { self.take(); } }, text('take'))
    ]);
  };

  /* ---- days ---- */

  Picker.prototype.showMonth = function () {
    var first = new Date(this.day.getFullYear(), this.day.getMonth(), 1);
    var day = plusDays(first, -((first.getDay() - this.weekStart + WEEK) % WEEK));
    dom.append(dom.empty(this.month), words(this.day, { month: 'long', year: 'numeric' }));
    dom.empty(this.days);
    for (var week = 0; week < WEEKS; week++) {
      var row = dom.make('tr');
      for (var i = 0; i < WEEK; i++, day = plusDays(day, 1)) { row.appendChild(this.makeDay(day)); }
      this.days.appendChild(row);
    }
  };

  Picker.prototype.makeDay = function (day) {
    var isChosen = day.toDateString() === this.day.toDateString();
    return dom.make('td', { 'aria-selected': isChosen ? 'true' : 'false' }, dom.make('button', {
      type: 'button', tabindex: isChosen ? 0 : -1, 'data-time': day.getTime(), 'class': day.getMonth() === this.day.getMonth() ? null : 'faint',
      'aria-label': words(day, { weekday: 'long', day: 'numeric', month: 'long', year: 'numeric' }),
      'aria-current': day.toDateString() === new Date().toDateString() ? 'date' : null
    }, day.getDate()));
  };

  Picker.prototype.focusDay = function () {
    this.days.querySelector('[tabindex="0"]').focus();
  };

  Picker.prototype.choose = function (day) {
    this.day = day;
    this.showMonth();
    this.focusDay();
  };

  /* A press chooses a day, a second one takes it. */
  Picker.prototype.click = function (event) {
    var time = event.target.getAttribute('data-time');
    if (event.target.tabIndex === 0) {
      this.take();
    } else if (time) {
      this.choose(new Date(Number(time)));
    }
  };

  /** The day that a key leads to from `day`, null for a key that leads nowhere. */
  Picker.prototype.dayOf = function (event) {
    var column = (this.day.getDay() - this.weekStart + WEEK) % WEEK;
    switch (event.key) {
      case 'ArrowLeft': return plusDays(this.day, -1);
      case 'ArrowRight': return plusDays(this.day, 1);
      case 'ArrowUp': return plusDays(this.day, -WEEK);
      case 'ArrowDown': return plusDays(this.day, WEEK);
      case 'Home': return plusDays(this.day, -column);
      case 'End': return plusDays(this.day, WEEK - 1 - column);
      case 'PageUp': return plusMonths(this.day, event.shiftKey ? -12 : -1);
      case 'PageDown': return plusMonths(this.day, event.shiftKey ? 12 : 1);
      default: return null;
    }
  };

  Picker.prototype.press = function (event) {
    var day = this.dayOf(event);
    if (day) {
      event.preventDefault();
      this.choose(day);
    } else if (event.key === 'Enter') {
      event.preventDefault();
      this.take();
    }
  };

  /* ---- taking it ---- */

  function write(input, value) {
    var event = document.createEvent('Event');
    event.initEvent('input', true, false);
    input.value = value;
    input.dispatchEvent(event);
  }

  Picker.prototype.takeNow = function () {
    var now = new Date();
    this.day = now;
    if (this.time) { write(this.time, two(now.getHours()) + two(now.getMinutes())); }
    this.takeDay();
  };

  Picker.prototype.take = function () {
    if (this.time) { write(this.time, this.hour.value && this.hour.value + this.minute.value); }
    this.takeDay();
  };

  Picker.prototype.takeDay = function () {
    write(this.date, two(this.day.getMonth() + 1) + '/' + two(this.day.getDate()) + '/' + this.day.getFullYear());
    this.close();
  };

  Picker.prototype.close = function () {
    document.body.removeChild(this.shade);
    this.date.focus();
  };

  Tandril.picker = {
    /** Opens the window for a date's field. options: {label, date: its input, time: the input of its time or null}. */
    open: function (options) { return new Picker(options); }
  };
}(window));
