'use strict';

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const { launch, openPage } = require('./support/browser');
const { startMockHost } = require('./support/mock_host');
const f = require('./support/fragments');

const ANSWERS = {
  ListOrders: f.listOrders('Orders', ['Service Order', 'Description'], [{ order: 'A1', cells: [f.cell('Boiler fails to start')] }]),
  MyActivities: f.myActivities('My activities', ['Service Order', 'Activity', 'Description', 'Standard'], [
    { order: 'A1', activities: [{ number: '10', cells: [f.cell('Boiler fails to start'), f.link('ReferenceActivity', 'REP', 'order')] }] }
  ]),
  GetDetails: f.activityDetails('Activity', 'A1', '10', [
    f.fieldRow('Status', f.select('ActivityStatus', [['15', 'Open', true], ['20', 'Done']])),
    f.fieldRow('Description', f.input('Description', 'Boiler fails to start')),
    f.fieldRow('Object', f.zoomInput('Object', 'OB-1', 'activity_A1_10')),
    f.fieldRow('Planned start', f.dateInput('PlannedStartTime', '11/15/2026', '1030')),
    f.fieldRow('Notes', f.area('ActivityText', 'Ring twice')),
    f.fieldRow('Number', f.fixed('ObjectNumber', '1')), f.hidden('ServerNote', 'x')
  ]),
  HyperLinkAndZoom: f.zoomWindow('Objects', 'CROB', ['Code', 'Text'], [['OB-1', 'Burner'], ['OB-2', 'Pump']]),
  ShowErrorPool: f.errorPool('Refused', 2)
};

let browser;
let host;
before(async () => {
  browser = await launch();
  host = await startMockHost(ANSWERS);
});
after(async () => {
  await browser.close();
  await host.stop();
});

const VIEWS = {
  details: async (page) => { await page.click('#divList tr.tablerows'); await page.waitForSelector('#divDetails .form'); },
  zoom: async (page) => {
    await VIEWS.details(page);
    await page.click('#divDetails .zoom');
    await page.waitForSelector('#divZoomHype .panel');
  }
};

test('AWindowTakesTheFocusAndGivesItBack', async () => {
  const page = await openPage(browser, host.address);
  await page.waitForSelector('#divList tr.tablerows');
  await VIEWS.zoom(page);
  assert.equal(await page.evaluate(() => document.activeElement.closest('#divZoomHype') !== null), true);
  for (let i = 0; i < 12; i++) {
    await page.keyboard.press('Tab');
    assert.equal(await page.evaluate(() => document.activeElement.closest('#divZoomHype') !== null), true);
  }
  await page.keyboard.press('Escape');
  assert.equal(await page.evaluate(() => document.activeElement.id), 'Object');
  await page.context().close();
});

test('ClosingTheDetailsLeadsBackToTheRow', async () => {
  const page = await openPage(browser, host.address);
  await page.waitForSelector('#divList tr.tablerows');
  await VIEWS.details(page);
  await page.click('#divDetails [aria-label=Close]');
  assert.equal(await page.evaluate(() => document.activeElement.className), 'tablerows opens');
  await page.context().close();
});
