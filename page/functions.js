/* The functions that fragments ask for. Their names and arguments are the component's; nothing else calls them by name. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var dom = Tandril.dom;
  var page = Tandril.page;
  var text = function () { return Tandril.text.apply(null, arguments); };

  var KINDS = { '1': 'order', '2': 'activity', '3': 'material', '4': 'labor', '5': 'other' };
  var FORM_WORDS = ['order', 'activity', 'material', 'labor', 'other'];

  /* The places below the details, which belong to the record shown there. */
  var COST_PLACES = ['divCostHeader', 'divCostLines', 'divCosts'];

  /* Fields whose zoom goes by another name, and the one that asks for the objects of a configuration. */
  var ZOOM_NAMES = { ServiceItem: 'Item' };
  var OBJECT_FIELDS = ['Object', 'OriginalObject', 'NewObject'];

  /* The field that waits for FillValues. */
  var zoomed = null;

  /* The link to a record of the master data, which gets the focus back. */
  var opener = null;

  function currentForm() {
    var place = page.place('divDetails');
    return place.shown && place.shown.form;
  }

  /** The keys of a record as they stand beside the title of its form. */
  function keyText(order, activity, line) {
    return [order, activity, line].filter(Boolean).join(' / ');
  }

  function showForm(method, args, done, keeps) {
    var isRecord = method === 'GetDetails' || method === 'GetDetailsForHRA';
    page.guard(function () {
      page.show('divDetails', {
        method: method, args: args, title: text('details'), focus: true, keeps: keeps,
        subtitle: isRecord ? keyText(args[1], args[2], args[3]) : ''
      }, function () {
        COST_PLACES.forEach(page.clear);
        if (done) { done(); }
      });
    });
  }

  /* ---- records ---- */

  function showdetails(kind, order, activity, line, flag) {
    openRecord(kind, order, activity, line, flag, null);
  }

  function openRecord(kind, order, activity, line, flag, shown, keeps) {
    showForm('GetDetails', [kind, order, activity, line, '', Number(flag) || 0], function () {
      if (shown) { shown(); }
      Tandril.refusals.show([kind, order, activity, line]);
      if (kind === '2') {
        page.show('divCostHeader', { method: 'CostLinesHeader', args: [order, activity], title: text('costHeader'), quiet: true });
      }
    }, keeps);
  }

  function showdetailsforhra(kind, order, activity, line, flag) {
    openHours(kind, order, activity, line, flag, null);
  }

  function openHours(kind, order, activity, line, flag, shown, keeps) {
    showForm('GetDetailsForHRA', [kind, order, activity, line, '', Number(flag) || 0], shown, keeps);
  }

  /** The form of a new record. A labour line without an order and activity is an hour registration. */
  function newobject(kind, order, activity) {
    if (kind === '4' && !order && !activity) {
      showForm('CreateFormforHra', [kind, '', '']);
    } else {
      showForm('CreateForm', [kind, order || '', activity || '']);
    }
  }

  /* ---- windows ---- */

  function minimize(name) {
    var place = page.place(name);
    if (place) { place.element.classList.toggle('minimized'); }
  }

  function winclose(name) {
    if (!page.place(name)) { return; }
    if (name === 'divZoomHype') { closeZoom(); return; }
    (name === 'divDetails' ? page.guard : atOnce)(function () {
      page.clear(name);
      if (name === 'divDetails') { closeRecord(); }
      var list = page.place('divList').shown;
      if (name === 'divList') {
        Tandril.views.leave();
      } else if (list && list.list) {
        list.list.focusActive();
      }
    });
  }

  function atOnce(act) {
    act();
  }

  /** Empties the places of a record that is there no more. */
  function closeRecord() {
    page.clear('divDetails');
    COST_PLACES.forEach(page.clear);
  }

  /* ---- cost lines ---- */

  function showlines(type, order, activity) {
    if (type === '0') {
      page.clear('divCostLines');
    } else {
      page.show('divCostLines', { method: 'BuildCostLines', args: [type, order, activity], title: text('costLines') });
    }
  }

  function listCostLines(type, order, activity) {
    page.show('divCosts', { method: 'ListCostLines', args: [type, order, activity], title: text('costs'), focus: true });
  }

  /* ---- saving ---- */

  /** Shows the lists as they are now; with `isLost` the focus, whose record is gone, comes back to the first of them. */
  function refreshLists(isLost) {
    page.refresh('divList', function (shown) {
      if (isLost && shown.list) { shown.list.takeFocus(); }
    });
    page.refresh('divCosts');
    page.refresh('divCostLines');
    Tandril.views.updateErrors();
    Tandril.status.update();
  }

  /** Says beside the buttons of the form why it was not saved; "" takes that away. */
  function complain(words) {
    dom.append(dom.empty(document.querySelector('#divDetails .complaint')), words);
  }

  /** What has the focus in the form, so that the form that follows a save can give it back. */
  function focusIn(form) {
    var element = document.activeElement;
    if (element.id === 'btnSave') { return 'btnSave'; }
    return form.element.contains(element) ? element.getAttribute('data-field') : null;
  }

  function focusAgain(name) {
    var form = currentForm();
    var element = name === 'btnSave' ? document.getElementById('btnSave') : name && form && form.control(name);
    if (element && !element.disabled) { element.focus(); }
  }

  /** Sends the record of the open form; done(saved) runs when the component took it. */
  function store(method, kind, key, isNew, done) {
    var form = currentForm();
    if (!form || form.saving) { return; }
    var read = form.read(isNew);
    complain('');
    if (read.problems) {
      complain(text('checkFields'));
      form.focusProblem();
      return;
    }
    var sent = form.snapshot();
    form.saving = true;
    page.call(method, [Tandril.records.xml(kind, key, read.fields, isNew)], function (error) {
      form.saving = false;
      if (error) { complain(error); return; }
      form.kept = isNew ? form.snapshot() : sent;
      Tandril.drafts.drop(form);
      page.say(text(isNew ? 'added' : 'saved'), 'good');
      done({ form: form, sent: sent });
    }, function () { form.saving = false; });
  }

  /**
   * Shows a record as it is stored now in the place of the form that it was saved from: `saved` is {form, sent}, what the
   * form showed when it was sent. A form that somebody has gone on typing into stays. The form of a new record cannot, so
   * that what was typed goes over into the one that follows. Where the form is shown no more nothing is opened.
   */
  function reopen(kind, key, isNew, saved) {
    var form = saved.form;
    var focused = null;
    function isTypedIn() { return form === currentForm() && form.isChanged(); }
    function stays() {
      if (form === currentForm()) { focused = focusIn(form); }
      return !isNew && isTypedIn();
    }
    if (form !== currentForm() || stays()) { return; }
    open(kind, key, function () {
      if (isNew) { carryOver(form, saved.sent); }
      focusAgain(focused);
    }, stays);
  }

  function carryOver(form, sent) {
    var stored = currentForm();
    Tandril.drafts.drop(form);
    if (stored) { stored.enter(form.since(sent)); }
  }

  function open(kind, key, shown, keeps) {
    var number = Object.keys(KINDS).filter(function (each) { return KINDS[each] === kind; })[0];
    if (kind === 'hra') {
      openHours('4', key.order, key.activity, key.line, '2', shown, keeps);
    } else {
      openRecord(number, key.order, key.activity, key.line, '2', shown, keeps);
    }
  }

  /** Ctrl+S saves the form in the details; a window over the page keeps it from that. */
  function saveByKey(event) {
    if (!(event.ctrlKey || event.metaKey) || event.altKey || event.shiftKey || String(event.key).toLowerCase() !== 's') { return; }
    event.preventDefault();
    var button = document.getElementById('btnSave');
    if (button && !Tandril.dialog.isOpen()) { button.click(); }
  }

  /** The drop-downs of the material form name the order and the activity that its call leaves open. */
  function chosen(field) {
    var control = currentForm() && currentForm().control(field);
    return control ? control.value : '';
  }

  function saveObject(kind, order, activity, line, mode) {
    var key = { order: order, activity: activity, line: line };
    if (kind === 'material' && !order) { key = { order: chosen('dropOrder'), activity: chosen('dropActivity'), line: line }; }
    var isNew = mode === 'New';
    store(isNew ? 'AddXml' : 'updatexml', kind, key, isNew, function (saved) {
      refreshLists();
      reopen(kind, key, isNew, saved);
    });
  }

  function createActivity(activity) {
    var key = { order: chosen('ServiceOrder'), activity: activity, line: '' };
    store('AddXml', 'activity', key, true, function (saved) {
      refreshLists();
      reopen('activity', key, true, saved);
    });
  }

  function nameOf(order, activity, line) {
    return line ? text('line', line) : activity ? text('activity', activity) : text('order', order);
  }

  function deleteObject(order, activity, line, costType) {
    Tandril.dialog.ask({
      title: text('confirmDelete'), text: text('confirmDeleteText', nameOf(order, activity, line)), yes: text('yesDelete'), danger: true
    }, function () {
      page.call('deleteNode', [order, activity, line, costType], function () {
        closeRecord();
        page.say(text('deleted'), 'good');
        refreshLists(true);
      });
    });
  }

  /* ---- master data ---- */

  function formWord(name) {
    var word = String(name || '').split('_')[0];
    return FORM_WORDS.indexOf(word) >= 0 ? word : word === 'hra' ? 'labor' : 'order';
  }

  function openWindow(mode, field, value, word) {
    var args = [mode, ZOOM_NAMES[field] || field, value, word];
    opener = mode === 1 ? document.activeElement : null;
    page.show('divZoomHype', { method: 'HyperLinkAndZoom', args: args, title: text('masterData'), database: true, focus: true });
  }

  function hyperlink(field, value, form) {
    openWindow(1, field, value, formWord(form || currentForm() && currentForm().name));
  }

  function zoom(field, formName) {
    var form = currentForm();
    if (!form || form.name !== formName) { return; }
    zoomed = { form: form, field: field };
    withConfiguration(form, field, function (value) { openWindow(0, field, value, formWord(formName)); });
  }

  /** The configuration whose objects are asked for: the form's, in a new activity its order's; "" for other fields. */
  function withConfiguration(form, field, done) {
    var control = form.control('Configuration');
    var own = control ? control.value : '';
    var order = chosen('ServiceOrder') || page.place('divDetails').view.args[1];
    if (OBJECT_FIELDS.indexOf(field) < 0) {
      done('');
    } else if (own || !form.isNew || formWord(form.name) !== 'activity') {
      done(own);
    } else {
      page.call('GetDetails', ['1', order, '', '', '', 0], function (fragment) {
        done(Tandril.panel.valueOf(Tandril.panel.read(fragment || ''), 'Configuration'));
      });
    }
  }

  function put(form, field, value) {
    var control = form.control(field);
    if (control) { control.value = value; }
    return control;
  }

  function fillValues(value, keyColumn, sequence) {
    var target = zoomed;
    closeZoom();
    if (!target || target.form !== currentForm()) { return; }
    var control = put(target.form, target.field, value);
    if (sequence !== undefined) { put(target.form, 'ObjectNumber', sequence); }
    if (control) { control.focus(); }
  }

  function closeZoom() {
    page.clear('divZoomHype');
    var control = zoomed ? zoomed.form === currentForm() && zoomed.form.control(zoomed.field) : opener;
    zoomed = null;
    opener = null;
    if (control) { control.focus(); }
  }

  /* ---- drop-downs and errors ---- */

  /* What a drop-down is filled with was not typed by anybody, so it is nothing that could be lost. */
  function fillDrop(field, method, args, done) {
    page.call(method, args, function (fragment) {
      var form = currentForm();
      var control = form && form.control(field);
      if (!control) { return; }
      Tandril.Form.fillOptions(control, Tandril.panel.readOptions(fragment || ''));
      form.kept[control.id] = control.value;
      if (done) { done(); }
    });
  }

  function getActivityDrop() {
    fillDrop('dropActivity', 'CreateActivityDropDown', [chosen('dropOrder')]);
  }

  function showErrors() {
    Tandril.views.mark(null);
    page.show('divList', { method: 'ShowErrorList', args: [], title: text('refused'), focus: true });
  }

  document.addEventListener('keydown', saveByKey);

  Tandril.functions = {
    showdetails: showdetails, showdetailsforhra: showdetailsforhra, minimize: minimize, winclose: winclose,
    showlines: showlines, newobject: newobject, newObject: newobject, ListCostLines: listCostLines,
    deleteObject: deleteObject, saveObject: saveObject, CreateActivity: createActivity, zoom: zoom, hyperlink: hyperlink,
    FillValues: fillValues, getActivityDrop: getActivityDrop, ShowErrors: showErrors
  };

  /** Opens the form of a new material line and fills its drop-downs. */
  Tandril.newMaterial = function () {
    showForm('CreateMaterialForm', [], function () {
      fillDrop('dropOrder', 'CreateOrderDropDown', [], getActivityDrop);
    });
  };

  /** Opens the form of a new activity, which offers the orders. */
  Tandril.newActivity = function () {
    showForm('NewObject', ['2', '', '']);
  };

  Tandril.refreshLists = refreshLists;
  Tandril.closeRecord = closeRecord;
  Tandril.closeZoom = closeZoom;
}(window));
