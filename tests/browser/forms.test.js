'use strict';

const { test } = require('node:test');
const assert = require('node:assert/strict');
const { useBrowser, withPage, called, waitForCall } = require('./support/mock_page');
const { comesTo, seesAnswers, seesCount } = require('./support/sees');
const f = require('./support/fragments');

const LIST = f.myActivities('My activities', ['Order', 'Activity'], [{ order: 'A1', activities: [{ number: '10', cells: [] }] }]);
const FORM = f.activityDetails('Activity', 'A1', '10', [
  f.fieldRow('Status', f.select('ActivityStatus', [['15', 'Open', true], ['20', 'Done']])),
  f.fieldRow('Description', f.input('Description', 'Boiler')),
  f.fieldRow('Configuration', f.input('Configuration', 'C-100')),
  f.fieldRow('Object', f.zoomInput('Object', 'OB-1', 'activity_A1_10')),
  f.fieldRow('Item', f.zoomInput('ServiceItem', '', 'activity_A1_10')),
  f.fieldRow('Planned', f.dateInput('PlannedStartTime', '11/15/2026', '1030')),
  f.fieldRow('Actual', f.dateInput('ExecutionStartTime', '', '')),
  f.fieldRow('Notes', f.area('ActivityText', 'Ring <twice> & wait')),
  f.hidden('ObjectNumber', '1'), f.hidden('ServerNote', 'a"b')
]);

const browser = useBrowser();

const withForm = (answers, act, options = {}) => withPage(browser(), { ListOrders: 'x', MyActivities: LIST, GetDetails: FORM, ...answers }, options,
  async (page, host) => {
    await page.click('#divList tr.tablerows');
    await page.waitForSelector('#divDetails .form');
    await act(page, host);
  });

test('SaveSendsWhatCanBeEditedAndLeavesUntouchedDatesAlone', () => withForm({ updatexml: '' }, async (page, host) => {
  await page.selectOption('#ActivityStatus', '20');
  await page.fill('#Description', 'Größe < 5 & "gut"');
  await page.fill('#ExecutionStartTime', '11/16/2026');
  await page.fill('#ExecutionStartTime_time', '0745');
  await page.click('#btnSave');
  await waitForCall(host, 'updatexml');
  assert.deepEqual(called(host, 'updatexml'), [[
    '<harbrook><ccsocservcactv><ServiceOrder ID="A1"><record Activity="10"><ActivityStatus>20</ActivityStatus>' +
    '<Description>Größe &lt; 5 &amp; &quot;gut&quot;</Description><Configuration>C-100</Configuration><Object>OB-1</Object><ServiceItem></ServiceItem>' +
    '<ExecutionStartTime>20261116 074500</ExecutionStartTime><ActivityText>Ring &lt;twice&gt; &amp; wait</ActivityText>' +
    '</record></ServiceOrder></ccsocservcactv></harbrook>'
  ]]);
  await page.waitForSelector('#message.good');
}));

test('ADateThatDoesNotReadIsNotSent', () => withForm({}, async (page, host) => {
  for (const date of ['tomorrow', '13/01/2026', '02/30/2026', '2026-11-15']) {
    await page.fill('#PlannedStartTime', date);
    await page.click('#btnSave');
    await page.waitForSelector('#PlannedStartTime[aria-invalid="true"]');
  }
  await seesAnswers(page);
  assert.match(await page.textContent('#PlannedStartTime-problem'), /mm\/dd\/yyyy/);
  assert.equal(await page.evaluate(() => document.activeElement.id), 'PlannedStartTime');
  assert.deepEqual(called(host, 'updatexml'), []);
}));

test('ARefusedSaveKeepsTheInput', () => withForm({ updatexml: 'Description must not be empty' }, async (page) => {
  await page.fill('#Description', '');
  await page.click('#btnSave');
  await page.waitForSelector('#divDetails .complaint:not(:empty)');
  assert.equal(await page.textContent('#divDetails .complaint'), 'Description must not be empty');
  assert.equal(await page.getAttribute('#divDetails .complaint', 'role'), 'alert');
  assert.equal(await page.inputValue('#Description'), '');
}));

test('DeleteAsksFirst', () => withForm({ deleteNode: null }, async (page, host) => {
  await page.click('#btnDelete');
  await page.click('.question button:not(.danger)');
  await seesAnswers(page);
  assert.deepEqual(called(host, 'deleteNode'), []);
  await page.click('#btnDelete');
  await page.click('.question .danger');
  await waitForCall(host, 'deleteNode');
  assert.deepEqual(called(host, 'deleteNode'), [['A1', '10', '', '']]);
}));

test('UnsavedInputIsNotLostWithoutAQuestion', () => withForm({}, async (page) => {
  await page.fill('#Description', 'changed');
  await page.click('#divDetails [aria-label=Close]');
  await page.waitForSelector('.question');
  await page.keyboard.press('Escape');
  assert.equal(await page.inputValue('#Description'), 'changed');
  await page.click('#divDetails [aria-label=Close]');
  await page.click('.question .danger');
  assert.equal(await page.$('#divDetails .form'), null);
}));

test('InputSurvivesAClosedWindow', () => withForm({}, async (page) => {
  await page.fill('#Description', 'not saved');
  await page.waitForFunction(() => Object.keys(localStorage).length > 0);
  await page.reload();
  await page.click('#divList tr.tablerows');
  await page.click('#divDetails .draft button');
  assert.equal(await page.inputValue('#Description'), 'not saved');
}));

test('AZoomFillsTheField', () => withForm({
  HyperLinkAndZoom: f.zoomWindow('Objects', 'CROB', ['Code'], [['OB-7']]).replace('"OB-7","CROB"', '"OB-7","CROB","42"')
}, async (page, host) => {
  await page.click('.field:has(#Object) .zoom');
  await page.click('#divZoomHype tr.tablerows');
  assert.equal(await page.inputValue('#Object'), 'OB-7');
  assert.equal(await page.inputValue('[data-field=ObjectNumber]'), '42');
  assert.deepEqual(called(host, 'HyperLinkAndZoom'), [[0, 'Object', 'C-100', 'activity']]);
  await page.click('.field:has(#ServiceItem) .zoom');
  await waitForCall(host, 'HyperLinkAndZoom', 2);
  await waitForCall(host, 'CloseDataBase', 2);
  assert.deepEqual(called(host, 'HyperLinkAndZoom')[1], [0, 'Item', '', 'activity']);
  assert.deepEqual(host.calls.map((call) => call.method).filter((name) => /DataBase|Zoom/.test(name)),
    ['OpenDataBase', 'HyperLinkAndZoom', 'CloseDataBase', 'OpenDataBase', 'HyperLinkAndZoom', 'CloseDataBase']);
}));

test('WhatWasTypedLastSurvives', () => withForm({}, async (page) => {
  await page.type('#Description', 'Cold ');
  await page.reload();
  await page.click('#divList tr.tablerows');
  await page.click('#divDetails .draft button');
  assert.equal(await page.inputValue('#Description'), 'Cold Boiler');
  assert.equal(await page.evaluate(() => document.activeElement.id), 'ActivityStatus');
}));

test('ADiscardedDraftIsNotOfferedAgain', () => withForm({}, async (page) => {
  await page.type('#Description', 'Cold ');
  await page.reload();
  await page.click('#divList tr.tablerows');
  await page.click('#divDetails .draft button:nth-of-type(2)');
  assert.equal(await page.inputValue('#Description'), 'Boiler');
  await page.reload();
  await page.click('#divList tr.tablerows');
  await page.waitForSelector('#divDetails .form');
  assert.equal(await page.$('.draft'), null);
}));

test('WhereNothingCanBeKeptTheBrowserAsks', () => withForm({}, async (page) => {
  const asked = [];
  page.on('dialog', (dialog) => { asked.push(dialog.type()); dialog.accept(); });
  await page.evaluate(() => Object.defineProperty(window, 'localStorage', { get() { throw new Error('refused'); } }));
  await page.type('#Description', 'Cold ');
  await page.reload();
  assert.deepEqual(asked, ['beforeunload']);
}));

/** Keeps what a method answers back until the function that comes of it is called. */
function holdBack(host, method) {
  const ready = host.answers[method];
  let release;
  const released = new Promise((resolve) => { release = resolve; });
  host.answers[method] = () => released.then(() => ready);
  return release;
}

/* The form that is shown after a save holds what is stored, and not what is typed while it comes. */
for (const [name, method] of [['TheSave', 'updatexml'], ['TheStoredRecord', 'GetDetails']]) {
  test(`WhatIsTypedWhile${name}IsUnderWayStays`, () => withForm({ updatexml: '' }, async (page, host) => {
    const answer = holdBack(host, method);
    const count = called(host, method).length;
    await page.fill('#Description', 'Burner');
    await page.click('#btnSave');
    await waitForCall(host, method, count + 1);
    await page.fill('#Description', 'Burners');
    answer();
    await page.waitForSelector('#message.good');
    await seesAnswers(page);
    assert.equal(await page.inputValue('#Description'), 'Burners');
    await page.click('#divDetails [aria-label=Close]');
    await page.waitForSelector('.question');
  }));
}

/* The form of a new record goes away, since the record is no new one any more. */
for (const method of ['AddXml', 'GetDetails']) {
  test(`WhatIsTypedInto${method === 'AddXml' ? 'ANewRecordWhileItIsSaved' : 'ANewRecordWhileTheStoredOneComes'}GoesOver`, () => withForm({
    AddXml: '', CreateForm: FORM.replace('"Modify"', '"New"')
  }, async (page, host) => {
    await page.click('#divDetails .create');
    await waitForCall(host, 'CreateForm');
    await seesAnswers(page);
    const answer = holdBack(host, method);
    const count = called(host, method).length;
    await page.fill('#Configuration', 'C-200');
    await page.click('#btnSave');
    await waitForCall(host, method, count + 1);
    await page.fill('#Description', 'Burners');
    answer();
    await waitForCall(host, 'GetDetails', 2);
    await seesAnswers(page);
    assert.equal(await page.inputValue('#Description'), 'Burners');
    assert.equal(await page.inputValue('#Configuration'), 'C-100');
    assert.equal(await page.evaluate(() => document.activeElement.getAttribute('data-field')), 'Description');
    host.answers.updatexml = '';
    await page.click('#btnSave');
    await waitForCall(host, 'updatexml');
    assert.match(called(host, 'updatexml')[0][0], /<Description>Burners<\/Description>/);
    await page.waitForSelector('#message.good');
    await seesAnswers(page);
    assert.equal(await page.$('.draft'), null);
  }));
}

test('AFormThatIsClosedWhileItIsSavedStaysClosed', () => withForm({ updatexml: '' }, async (page, host) => {
  const answer = holdBack(host, 'updatexml');
  await page.click('#btnSave');
  await waitForCall(host, 'updatexml');
  await page.click('#divDetails [aria-label=Close]');
  await seesCount(page, '#divDetails .form', 0);
  answer();
  await page.waitForSelector('#message.good');
  await seesAnswers(page);
  assert.equal(await page.$('#divDetails .form'), null);
  assert.equal(called(host, 'GetDetails').length, 1);
  assert.equal(called(host, 'MyActivities').length, 2);
}));

test('ASecondPressSavesOnce', () => withForm({ updatexml: () => new Promise((resolve) => { setTimeout(resolve, 300, ''); }) }, async (page, host) => {
  await page.$eval('#btnSave', (button) => { button.click(); button.click(); });
  await waitForCall(host, 'GetDetails', 2);
  await seesAnswers(page);
  assert.equal(called(host, 'updatexml').length, 1);
}));

test('TheOptionsOfANewMaterialLineAreNoInputThatCouldBeLost', () => withForm({
  CreateMaterialForm: f.activityDetails('New material', '', '', [f.fieldRow('Order', f.select('dropOrder', [])), f.fieldRow('Item', f.input('Item', ''))]),
  CreateOrderDropDown: '<OPTION value=A1 >A1<OPTION value=A2 >A2'
}, async (page) => {
  await page.click('[data-view=newMaterial]');
  await comesTo(() => page.inputValue('[data-field=dropOrder]'), 'A1');
  await page.click('#divDetails [aria-label=Close]');
  await seesCount(page, '#divDetails .form', 0);
  assert.equal(await page.$('.question'), null);
}));

test('TheLinksOfAnActivityReachTheirCalls', () => withForm({}, async (page, host) => {
  await page.click('#divDetails .show');
  await waitForCall(host, 'ListCostLines');
  assert.deepEqual(called(host, 'ListCostLines'), [['Material', 'A1', '10']]);
  await page.click('#divDetails .create');
  await waitForCall(host, 'CreateForm');
  assert.deepEqual(called(host, 'CreateForm'), [['3', 'A1', '10']]);
}));
