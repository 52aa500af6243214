'use strict';

/* The page on paper: a list has all its rows there, the ones out of view, too, and nothing that can only be pressed. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const { launch, openPage } = require('./support/browser');
const { startMockHost } = require('./support/mock_host');
const { comesTo, seesText } = require('./support/sees');
const f = require('./support/fragments');

const GROUPS = Array.from({ length: 400 }, (_, i) => ({
  order: 'A' + i, activities: [{ number: '10', cells: [f.cell(`Work ${i} of the long list`), f.cell('11/15/2026 1030')] }]
}));
const ANSWERS = {
  ListOrders: 'x', MyActivities: f.myActivities('My activities', ['Order', 'Activity', 'Description', 'Planned'], GROUPS),
  GetDetails: f.activityDetails('Activity', 'A1', '10', [
    f.fieldRow('Description', f.input('Description', 'Boiler')), f.fieldRow('Planned', f.dateInput('PlannedStartTime', '11/15/2026', '1030')),
    f.fieldRow('Object', f.zoomInput('Object', 'OB-1', 'activity_A1_10'))
  ])
};

let browser;
let host;
let page;
before(async () => {
  browser = await launch();
  host = await startMockHost(ANSWERS);
  page = await openPage(browser, host.address, { colorScheme: 'dark' });
  await seesText(page, '#divList .count', '400');
  await page.click('#divList tr.tablerows');
  await page.waitForSelector('#divDetails .form');
});
after(async () => {
  await browser.close();
  await host.stop();
});

const rows = () => page.$$eval('#divList tbody tr:not(.gap)', (all) => all.length);

test('APrintedListHasAllItsRows', async () => {
  const shown = await rows();
  assert.ok(shown < 100, String(shown));
  await page.evaluate(() => window.addEventListener('beforeprint', () => {
    window.printed = document.querySelectorAll('#divList tbody tr:not(.gap)').length;
  }));
  const pdf = (await page.pdf()).toString('latin1');
  assert.equal(await page.evaluate(() => window.printed), 800);
  const pages = pdf.match(/\/Type\s*\/Page\b/g).length;
  assert.ok(pages >= 8, `${pages} pages`);
  await comesTo(rows, shown);
});

test('PaperShowsNothingToPress', async () => {
  await page.emulateMedia({ media: 'print', colorScheme: 'dark' });
  const pressed = await page.$$eval('button, input[type=search], nav, summary', (all) => all.filter((element) =>
    element.checkVisibility() && !element.closest('.tableheader, .rows')).map((element) => element.outerHTML));
  assert.deepEqual(pressed, []);
  assert.deepEqual(await page.$eval('.panel', (panel) => {
    const { color, backgroundColor } = getComputedStyle(panel);
    return [color, backgroundColor];
  }), ['rgb(0, 0, 0)', 'rgb(255, 255, 255)']);
  await page.emulateMedia({ media: 'screen' });
});

test('NothingWasComplainedOf', () => assert.deepEqual(page.problems, []));
