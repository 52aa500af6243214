/* Shows the form of a fragment as fields with labels, and reads it back as the texts that the component stores. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var panel = Tandril.panel;
  var text = function () { return Tandril.text.apply(null, arguments); };

  var TIME = '_time';

  /* The labels that the component writes in English by itself, in the form that has the drop-down of the orders. */
  var OWN_FORM = 'dropOrder';
  var OWN_LABELS = { 'Service Order': 'dropOrder', 'Service Activity': 'dropActivity', 'Material Line Id': 'materialLine' };

  function hasSelect(rows, field) {
    return rows.some(function (row) {
      return panel.kidsOf(row, 'td').some(function (cell) {
        return panel.kidsOf(cell, 'select').some(function (select) { return select.field === field; });
      });
    });
  }

  /* ---- building ---- */

  function Form(source, options) {
    this.name = source.name;
    this.run = options.run;
    this.element = dom.make('div', { 'class': 'form details', role: 'group', 'aria-label': options.label, 'data-form': this.name });
    this.buttons = [];
    this.labels = hasSelect(source.rows, OWN_FORM) ? OWN_LABELS : {};
    this.stored = {}; /* by id, the text behind a control, which may hold what the control cannot show */
    source.rows.forEach(this.addRow, this);
    this.kept = this.snapshot();
  }

  Form.prototype.addRow = function (row) {
    var cells = panel.kidsOf(row, 'td');
    var buttons = [];
    cells.forEach(function (cell) {
      buttons = buttons.concat(panel.kidsOf(cell, 'input').filter(function (input) { return input.kind === 'button'; }));
    });
    if (buttons.length) {
      this.buttons = this.buttons.concat(buttons);
    } else if (cells.length > 1) {
      this.element.appendChild(this.makeField(row, cells[0], cells.slice(1)));
    }
  };

  Form.prototype.makeField = function (row, labelCell, cells) {
    var written = panel.trimmed(labelCell);
    var label = this.labels.hasOwnProperty(written) ? text(this.labels[written]) : written;
    var control = dom.make('div', { 'class': 'control' });
    var first = null;
    cells.forEach(function (cell) {
      var made = this.fillControl(control, cell, label);
      first = first || made;
    }, this);
    var caption = first ? dom.make('label', { 'for': first }, label) : dom.make('span', { 'class': 'label' }, label);
    if (first) { dom.append(control, dom.make('p', { 'class': 'problem', id: first + '-problem', role: 'alert' })); }
    return dom.make('div', { 'class': 'field' + (first ? '' : ' fixed'), hidden: row.hidden }, [caption, control]);
  };

  /** Adds what a cell holds; returns the id of the first control made. */
  Form.prototype.fillControl = function (control, cell, label) {
    var first = null;
    if (cell.field) {
      control.appendChild(dom.make('span', { 'class': 'value', 'data-name': cell.field }, panel.trimmed(cell)));
      return null;
    }
    cell.kids.forEach(function (kid) {
      if (kid.hint) {
        this.addHint(control, kid.hint, label);
        return;
      }
      var made = this.makeControl(kid, label);
      if (!made) { return; }
      control.appendChild(made);
      first = first || made.id || null;
    }, this);
    return first;
  };

  /* A format hint stands in the empty field that it is for; a value that cannot be edited needs none. */
  Form.prototype.addHint = function (control, hint, label) {
    var input = control.lastChild;
    if (!input || input.nodeName !== 'INPUT') { return; }
    input.setAttribute('placeholder', hint);
    input.classList.add(hint === 'hhmm' ? 'time' : 'date');
    if (hint !== 'hhmm') {
      this.addPicker(control, input, label);
    } else if (control.querySelector('.calendar')) {
      control.appendChild(control.querySelector('.calendar'));
    }
  };

  Form.prototype.makeControl = function (kid, label) {
    if (typeof kid === 'string') {
      var shown = kid.replace(/^[\s\u00a0]+|[\s\u00a0]+$/g, '');
      return shown ? dom.make('span', { 'class': 'value' }, shown) : null;
    }
    switch (kid.tag) {
      case 'input': return this.makeInput(kid, label);
      case 'textarea': return this.makeTextarea(kid);
      case 'select': return this.makeSelect(kid);
      case 'span': return this.makeZoom(kid, label);
      case 'a': return this.makeLink(kid);
      default: return null;
    }
  };

  function isTime(field) {
    return field.slice(-TIME.length) === TIME;
  }

  Form.prototype.makeInput = function (node, label) {
    var input = dom.make('input', {
      type: 'text', id: dom.freeId(node.field), 'data-field': node.field, size: node.size, disabled: node.disabled,
      autocomplete: 'off', 'aria-label': isTime(node.field) ? text('timeOf', label) : null
    });
    input.value = this.stored[input.id] = node.value === undefined ? '' : node.value;
    return input;
  };

  Form.prototype.makeTextarea = function (node) {
    var area = dom.make('textarea', { rows: 4, id: dom.freeId(node.field), 'data-field': node.field });
    area.value = this.stored[area.id] = node.value;
    return area;
  };

  Form.prototype.makeSelect = function (node) {
    var run = this.run;
    var select = dom.make('select', {
      id: dom.freeId(node.field), 'data-field': node.field, disabled: node.disabled,
      onchange: node.call && function (event) { run(node.call, event); }
    });
    fillOptions(select, panel.kidsOf(node, 'option').map(function (option) {
      return { value: option.value, text: panel.trimmed(option), selected: option.selected };
    }));
    return select;
  };

  function fillOptions(select, options) {
    dom.empty(select);
    options.forEach(function (option) {
      var element = dom.make('option', {}, option.text);
      element.value = option.value;
      element.selected = Boolean(option.selected);
      select.appendChild(element);
    });
  }

  Form.prototype.makeZoom = function (node, label) {
    var run = this.run;
    return dom.make('button', {
      type: 'button', 'class': 'links zoom', title: text('lookUp', label), 'aria-label': text('lookUp', label),
      onclick: function (event) { run(node.call, event); }
    }, Tandril.icon('search'));
  };

  Form.prototype.makeLink = function (node) {
    var run = this.run;
    var shown = panel.trimmed(node);
    return shown === '' ? null : dom.make('button', {
      type: 'button', 'class': 'link', onclick: function (event) { run(node.call, event); }
    }, shown);
  };

  /* The window writes into the text fields; the text stays what counts. */
  Form.prototype.addPicker = function (control, input, label) {
    var self = this;
    var name = text('pickDate', label);
    if (input.disabled) { return; }
    dom.append(control, dom.make('button', {
      type: 'button', 'class': 'calendar', 'aria-label': name, title: name,
      onclick: function () {
        Tandril.picker.open({ label: label, date: input, time: self.control(input.getAttribute('data-field') + TIME) });
      }
    }, Tandril.icon('calendar')));
  };

  /* ---- reading ---- */

  Form.prototype.controls = function () {
    return this.element.querySelectorAll('[data-field]');
  };

  Form.prototype.control = function (field) {
    var found = null;
    dom.each(this.controls(), function (control) {
      if (!found && control.getAttribute('data-field') === field) { found = control; }
    });
    return found;
  };

  Form.prototype.snapshot = function () {
    var values = {};
    dom.each(this.controls(), function (control) { values[control.id] = control.value; });
    return values;
  };

  /** Whether the form shows other values than these, as far as they are known. */
  Form.prototype.differs = function (values) {
    return Array.prototype.some.call(this.controls(), function (control) {
      return values[control.id] !== undefined && values[control.id] !== control.value;
    });
  };

  Form.prototype.isChanged = function () {
    return this.differs(this.kept);
  };

  /** What the fields hold that did not hold these values, by the names of the fields. */
  Form.prototype.since = function (values) {
    var changed = {};
    dom.each(this.controls(), function (control) {
      if (values[control.id] !== undefined && values[control.id] !== control.value) { changed[control.getAttribute('data-field')] = control.value; }
    });
    return changed;
  };

  /** Puts values into the fields of those names that can be edited, as if they were typed. */
  Form.prototype.enter = function (values) {
    dom.each(this.controls(), function (control) {
      var name = control.getAttribute('data-field');
      if (values.hasOwnProperty(name) && !control.disabled) { control.value = values[name]; }
    });
  };

  Form.prototype.restore = function (values) {
    dom.each(this.controls(), function (control) {
      if (values[control.id] !== undefined && !control.disabled) { control.value = values[control.id]; }
    });
  };

  function isHidden(control) {
    var field = dom.around(control, 'field', null);
    return Boolean(field && field.hidden);
  }

  /**
   * What a save sends: { fields: [{name, value}], problems: number }. A new record takes every field. A changed one takes
   * what can be edited; a date-time that was not touched stays out, because the form does not show all of it, and so
   * does what travels hidden and did not change.
   */
  Form.prototype.read = function (isNew) {
    var result = { fields: [], problems: 0 };
    var seen = {};
    var self = this;
    dom.each(this.controls(), function (control) {
      var name = control.getAttribute('data-field');
      if (seen[name] || isTime(name) && seen[name.slice(0, -TIME.length)] || /^drop(Order|Activity)$/.test(name)) { return; }
      seen[name] = true;
      self.readControl(control, name, isNew, result);
    });
    return result;
  };

  Form.prototype.readControl = function (control, name, isNew, result) {
    var time = this.control(name + TIME);
    var kept = this.kept;
    var changed = kept[control.id] !== control.value || time !== null && kept[time.id] !== time.value;
    var isUntouched = control.value !== '' && time !== null || isHidden(control) || control.disabled;
    if (!isNew && !changed && isUntouched) { return; }
    var value = changed || this.stored[control.id] === undefined ? control.value : this.stored[control.id];
    if (time) {
      value = Tandril.stamps.read(control.value, time.value);
      this.report(control, value === null ? text('badDate') : '');
      if (value === null) { result.problems += 1; }
    }
    result.fields.push({ name: name, value: value === null ? '' : value });
  };

  /** Shows a message beside a control; an empty one takes it away. */
  Form.prototype.report = function (control, message) {
    var note = document.getElementById(control.id + '-problem');
    control.setAttribute('aria-invalid', message ? 'true' : 'false');
    if (!note) { return; }
    dom.append(dom.empty(note), message);
    if (message) { control.setAttribute('aria-describedby', note.id); }
  };

  Form.prototype.focusProblem = function () {
    var control = this.element.querySelector('[aria-invalid="true"]');
    if (control) { control.focus(); }
  };

  Form.prototype.focusFirst = function () {
    var control = this.element.querySelector('.field:not([hidden]) [data-field]:not(:disabled)');
    if (control) { control.focus(); }
  };

  Form.fillOptions = fillOptions;
  Tandril.Form = Form;
}(window));
