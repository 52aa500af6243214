'use strict';

const { test } = require('node:test');
const assert = require('node:assert/strict');
const { openPage } = require('./support/browser');
const { useBrowser, withPage, called, waitForCall } = require('./support/mock_page');
const { startMockHost } = require('./support/mock_host');
const { comesTo, seesAnswers, seesText } = require('./support/sees');
const f = require('./support/fragments');

const LABELS = ['Service Order', 'Activity', 'Description', 'Planned start'];
const ACTIVITIES = f.myActivities('My activities', LABELS, [
  { order: 'A1', activities: [
    { number: '10', cells: [f.cell('Boiler fails to start'), f.cell('11/15/2026 1030')] },
    { number: '20', cells: [f.cell('Pump is loud'), f.cell('11/16/2026 0800')] }
  ] },
  { order: 'Büro 7', activities: [{ number: '10', cells: [f.cell('Größe prüfen'), f.cell('')] }] }
]);
const DETAILS = f.activityDetails('Activity', 'A1', '10', [f.fieldRow('Description', f.input('Description', 'Boiler fails to start'))]);

const browser = useBrowser();

const overHost = (answers, enterprise, act) => withPage(browser(), answers, { enterprise }, act);

test('ShowsTheRowsOfMyActivities', () => overHost({ MyActivities: ACTIVITIES, ListOrders: 'x' }, {}, async (page, host) => {
  await seesText(page, '#divList .count', '3');
  assert.equal(host.calls[0].method, 'Initialize');
  assert.equal(await page.textContent('#divList h2'), 'My activities');
  assert.deepEqual(await page.$$eval('#divList th', (cells) => cells.map((cell) => cell.textContent)), LABELS);
  const rows = await page.$$eval('#divList tbody tr', (all) => all.map((row) =>
    [row.className.split(' ')[0], ...Array.from(row.cells, (cell) => cell.textContent.trim())]));
  assert.deepEqual(rows, [
    ['orderrow', 'A1'],
    ['tablerows', '', '10', 'Boiler fails to start', '11/15/2026 1030'],
    ['tablerows', '', '20', 'Pump is loud', '11/16/2026 0800'],
    ['orderrow', 'Büro 7'],
    ['tablerows', '', '10', 'Größe prüfen', '']
  ]);
}));

test('ClickOnARowReachesShowdetails', () => overHost({ MyActivities: ACTIVITIES, GetDetails: DETAILS, ListOrders: 'x' }, {}, async (page, host) => {
  await page.click('#divList tr.tablerows span.links');
  await page.waitForSelector('#divDetails .form');
  assert.deepEqual(called(host, 'GetDetails'), [['2', 'A1', '10', '', '', 2]]);
  assert.equal(await page.inputValue('#divDetails #Description'), 'Boiler fails to start');
}));

test('EnterOnARowReachesShowdetails', () => overHost({ MyActivities: ACTIVITIES, GetDetails: DETAILS, ListOrders: 'x' }, {}, async (page, host) => {
  await seesText(page, '#divList .count', '3');
  await page.focus('#divList tr[tabindex="0"]');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#divDetails .form');
  assert.deepEqual(called(host, 'GetDetails'), [['2', 'A1', '20', '', '', 2]]);
}));

test('FirstRunFetchesTheFieldMapperAndTheOrders', () => {
  let orders = '';
  return overHost({
    FMapperXMLExists: false,
    ListOrders: () => orders,
    DownloadXml: () => { orders = 'x'; return 'New Data has been downloaded.'; },
    MyActivities: () => (orders ? ACTIVITIES : '')
  }, { fieldmapper: '<mapper><I18N/></mapper>', orders: '<harbrook/>' }, async (page, host) => {
    await page.waitForSelector('#divList tr.tablerows');
    assert.deepEqual(host.fetched, ['/enterprise/fieldmapper', '/enterprise/orders']);
    assert.deepEqual(called(host, 'getFMapper'), [['<mapper><I18N/></mapper>', 'Yes']]);
    assert.deepEqual(called(host, 'DownloadXml'), [['<harbrook/>']]);
  });
});

for (const [name, answer] of Object.entries({ page: '<html><body>Sign in</body></html>', part: '<mapper><I18N', other: '<mapper/>' })) {
  test(`FirstRunTakesNoForeignFieldMapper ${name}`, async () => {
    const host = await startMockHost({ FMapperXMLExists: false }, { fieldmapper: answer });
    const page = await openPage(browser(), host.address);
    await page.waitForSelector('#message.bad');
    await seesText(page, '#message', /is not what was asked for/);
    assert.deepEqual(called(host, 'getFMapper'), []);
    await page.context().close();
    await host.stop();
  });
}

test('FirstRunWithoutTheServerSaysSo', async () => {
  const host = await startMockHost({ FMapperXMLExists: false, Get_Error: 'There are no activities' });
  const page = await openPage(browser(), host.address);
  await page.waitForSelector('#divList .note');
  await seesText(page, '#message', /enterprise server cannot be reached/);
  await seesText(page, '#divList .note', 'There are no activities');
  assert.deepEqual(called(host, 'DownloadXml'), []);
  await page.context().close();
  await host.stop();
});

const VIEWS = {
  myActivities: 'MyActivities', activitiesOpen: 'ViewActivities_W', activitiesSent: 'ViewActivities_SI', completed: 'completedAgenda',
  cancelled: 'canceledAgenda', orders: 'ListOrders', ordersOpen: 'ViewOrders_W', ordersSent: 'ViewOrders_SI'
};

test('TheMenuOpensTheEightLists', () => {
  const answers = {};
  Object.entries(VIEWS).forEach(([view, method]) => {
    answers[method] = f.listOrders('Title of ' + view, ['Service Order'], [{ order: 'A1', cells: [] }]);
  });
  return overHost(answers, {}, async (page, host) => {
    for (const [view, method] of Object.entries(VIEWS)) {
      await page.click(`[data-view="${view}"]`);
      await seesText(page, '#divList h2', 'Title of ' + view);
      assert.ok(called(host, method).length > 0, method);
      assert.equal(await page.getAttribute(`[data-view="${view}"]`, 'aria-current'), 'page');
    }
  });
});

test('AnEmptyListShowsTheErrorOfItsOwnCall', () => overHost({ ListOrders: 'x' }, {}, async (page, host) => {
  host.answers.Get_Error = () => `Error of ${host.calls[host.calls.length - 2].method}`;
  await page.click('[data-view=cancelled]');
  await seesText(page, '#divList .note', 'Error of canceledAgenda');
}));

/* A list without headings takes two calls, so another view may be asked for between them. */
test('TheViewThatWasAskedForLastIsShown', () => overHost({
  ListOrders: 'x', MyActivities: ACTIVITIES, ViewHra_W: f.listOrders('Hours', [], [{ order: 'A1', cells: [] }]),
  getColumnHeadingsForHRA: f.listOrders('', ['Order'], []), canceledAgenda: f.listOrders('Cancelled', ['Order'], [{ order: 'A2', cells: [] }])
}, {}, async (page, host) => {
  await seesText(page, '#divList h2', 'My activities');
  await page.evaluate(() => ['hoursOpen', 'cancelled'].forEach((view) => document.querySelector(`[data-view=${view}]`).click()));
  await waitForCall(host, 'ViewHra_W');
  await seesAnswers(page);
  assert.equal(await page.textContent('#divList h2'), 'Cancelled');
}));

test('ARecordThatWasClosedDoesNotComeBack', () => overHost({ MyActivities: ACTIVITIES, GetDetails: DETAILS, ListOrders: 'x' }, {}, async (page, host) => {
  await page.waitForSelector('#divList tr.tablerows');
  await page.evaluate(() => {
    window.Tandril.functions.showdetails('2', 'A1', '10', '', '2');
    window.Tandril.closeRecord();
  });
  await waitForCall(host, 'GetDetails');
  await seesAnswers(page);
  assert.equal(await page.$('#divDetails .form'), null);
}));

test('WhatIsPressedBeforeThePageIsReadyWaits', async () => {
  const host = await startMockHost({ ListOrders: 'x', canceledAgenda: f.listOrders('Cancelled', ['Order'], [{ order: 'A2', cells: [] }]) });
  let letIn;
  host.entrance = new Promise((resolve) => { letIn = resolve; });
  const page = await openPage(browser(), host.address);
  await page.click('[data-view=cancelled]');
  assert.equal(await page.isDisabled('#sync'), true);
  letIn();
  await comesTo(() => called(host, 'canceledAgenda').length, 1);
  await comesTo(() => page.isDisabled('#sync'), false);
  assert.equal(host.calls[0].method, 'Initialize');
  assert.equal(await page.textContent('#message'), '');
  assert.deepEqual(page.problems, []);
  await page.context().close();
  await host.stop();
});

test('AFaultIsShownInPlainWords', async () => {
  const host = await startMockHost({ ListOrders: 'x', MyActivities: () => ({ fault: 'the log cannot be written' }) });
  const page = await openPage(browser(), host.address);
  await page.waitForSelector('#message.bad');
  await seesText(page, '#message', /MyActivities ended in a fault: the log cannot be written/);
  await page.context().close();
  await host.stop();
});
