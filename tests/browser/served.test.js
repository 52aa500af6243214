'use strict';

/* The page as the web host serves it, over a home with the sample data. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { launch, openPage } = require('./support/browser');
const { startSystem, ROOT } = require('./support/system');
const { comesTo, eventually, seesText } = require('./support/sees');
const hostile = require('./support/hostile');

let browser;
let system;
let page;

before(async () => {
  browser = await launch();
  system = await startSystem({ filled: true });
  page = await openPage(browser, system.address);
  await page.waitForSelector('#divList tr.tablerows');
});
after(async () => {
  await browser.close();
  await system.stop();
});

const texts = (selector) => page.$$eval(selector, (all) => all.map((element) => element.textContent.trim()));
const callsLogged = (method) => system.host.log().split(`/client20/${method} 200`).length - 1;

/* The open orders of the samples with their activities, as the store file has them. */
function openWork() {
  const xml = fs.readFileSync(path.join(ROOT, 'samples', 'orders.xml'), 'utf8');
  const open = new Set([...xml.matchAll(/<record ServiceOrder="([^"]+)"[^>]*>\s*<OrderStatus>15</g)].map((match) => match[1]));
  const section = xml.slice(xml.indexOf('<ccsocservcactv>'), xml.indexOf('</ccsocservcactv>'));
  return [...section.matchAll(/<ServiceOrder ID="([^"]+)"[^>]*>([^]*?)<\/ServiceOrder>/g)]
    .filter(([, order]) => open.has(order))
    .map(([, order, inner]) => ({
      order,
      activities: [...inner.matchAll(/Activity="([^"]+)"[^]*?<ActivityDescription>([^<]*)</g)].map(([, number, description]) => [number, description])
    }));
}

test('MyActivitiesShowsTheOpenOrdersAndTheirActivities', async () => {
  const work = openWork();
  await seesText(page, '#divList .count', String(work.reduce((sum, { activities }) => sum + activities.length, 0)));
  const rows = await page.$$eval('#divList tbody tr', (all) => all.map((row) => ({
    isGroup: row.classList.contains('orderrow'), cells: Array.from(row.cells, (cell) => cell.textContent.trim())
  })));
  const shown = [];
  rows.forEach(({ isGroup, cells }) => {
    if (isGroup) { shown.push({ order: cells[0], activities: [] }); } else { shown[shown.length - 1].activities.push([cells[1], cells[3]]); }
  });
  assert.ok(shown.length > 10);
  assert.deepEqual(shown, work.map(({ order, activities }) => ({
    order, activities: activities.map(([number, description]) => [number, description.replace(/&amp;/g, '&')])
  })));
  assert.deepEqual((await texts('#divList th')).slice(0, 4), ['Service Order', 'Activity', 'Status', 'Description']);
});

test('ClickReachesShowdetailsAndTheFormShowsTheRecord', async () => {
  const before = callsLogged('GetDetails');
  const description = await page.textContent('#divList tr.tablerows td:nth-child(4)');
  await page.click('#divList tr.tablerows span.links');
  await page.waitForSelector('#divDetails .form');
  await comesTo(() => callsLogged('GetDetails'), before + 1);
  assert.equal(await page.inputValue('#divDetails [data-field=ActivityDescription]'), description);
});

test('TheCostLinesOfAnActivityShowBelowIt', async () => {
  await page.waitForSelector('#divCostHeader select');
  await page.selectOption('#divCostHeader select', '1');
  await page.waitForSelector('#divCostLines .panel');
  await comesTo(() => callsLogged('BuildCostLines'), 1);
});

const VIEWS = ['activitiesOpen', 'activitiesSent', 'completed', 'cancelled', 'orders', 'ordersOpen', 'ordersSent', 'hours', 'hoursOpen',
  'hoursSent', 'materialOpen', 'labourOpen', 'otherOpen', 'materialSent', 'labourSent', 'otherSent', 'myActivities'];

for (const view of VIEWS) {
  test(`TheMenuShows_${view}`, async () => {
    await page.$$eval('#menu details', (groups) => groups.forEach((group) => { group.open = true; }));
    await page.evaluate(() => document.querySelector('#divList').replaceChildren());
    await page.click(`[data-view=${view}]`);
    await page.waitForSelector('#divList tr.tablerows');
    await eventually(async () => {
      const shape = await page.$$eval('#divList tr.tablerows', (rows) => rows.map((row) => row.cells.length));
      assert.ok(shape.every((count) => count === shape[0]));
      assert.equal((await texts('#divList th')).length, shape[0]);
    });
  });
}

test('NothingWasComplainedOf', () => {
  assert.deepEqual(page.problems, []);
});

const escape = (text) => text.replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/>/g, '&gt;').replace(/"/g, '&quot;');

/* One order and one activity per hostile value, which stands in their texts and in the number of the order. */
function hostileOrders(values) {
  const record = (value, index) => `<record ServiceOrder="H${index}" State="O"><OrderStatus>15</OrderStatus><OrderDate>20261106 092000</OrderDate>` +
    `<Description>${escape(value)}</Description><CustomerName>${escape(value)}</CustomerName></record>`;
  const group = (value, index) => `<ServiceOrder ID="H${index}" State="O"><record Activity="${escape(value)}" State="O"><ActivityStatus>15</ActivityStatus>` +
    `<ActivityDescription>${escape(value)}</ActivityDescription><ActivityText>${escape(value)}</ActivityText></record></ServiceOrder>`;
  return `<harbrook><ccsocservcordr>${values.map(record).join('')}</ccsocservcordr><ccsocservcactv>${values.map(group).join('')}</ccsocservcactv>` +
    '<ccsocservcmatl/><ccsocservclabr/><ccsocservcothr/><ccsocservchra/></harbrook>';
}

test('HostileRecordsOfTheStoreShowAsText', async () => {
  const isXml = (value) => !/[\u0000-\u0008\u000b\u000c\u000e-\u001f]/.test(value) && value.trim() !== '';
  const values = hostile.foreign.filter(isXml);
  const own = await startSystem({ filled: true, orders: hostileOrders(values) });
  const shown = await openPage(browser, own.address);
  const asked = [];
  shown.on('request', (request) => asked.push(request.url()));
  try {
    await seesText(shown, '#divList .count', String(values.length));
    const normal = (text) => text.replace(/&nbsp;?/g, ' ').replace(/[\s\u00a0]+/g, ' ').trim();
    const rows = await shown.$$eval('#divList tr.tablerows', (all) => all.map((row) => [row.cells[1].textContent, row.cells[3].textContent]));
    assert.equal(rows.length, values.length);
    rows.forEach(([number, description], index) => {
      assert.equal(normal(description), normal(values[index]));
      assert.equal(normal(number), normal(values[index]));
    });
    for (let index = 0; index < values.length; index += 7) {
      await shown.evaluate((args) => window.Tandril.page.run({ name: 'showdetails', args }), ['1', 'H' + index, '', '', '2']);
      await seesText(shown, '#divDetails h2 small', 'H' + index);
      const value = await shown.inputValue('#divDetails [data-field=Description]');
      assert.equal(normal(value), normal(values[index].replace(/[\r\n]/g, '')));
    }
    assert.equal(await shown.evaluate(() => window.caught), undefined);
    assert.deepEqual(asked.filter((address) => !address.startsWith(new URL(own.address).origin + '/')), []);
    assert.deepEqual(shown.problems, []);
  } finally {
    await shown.context().close();
    await own.stop();
  }
});
