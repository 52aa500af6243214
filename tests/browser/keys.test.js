'use strict';

/* Records whose keys hold blanks, quotes, umlauts and what ends a call: the fragments are the component's own. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const { launch, openPage } = require('./support/browser');
const { startSystem } = require('./support/system');
const { comesTo, seesView } = require('./support/sees');

const escaped = (text) => text.replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/>/g, '&gt;').replace(/"/g, '&quot;');

/* [order, activity, line] */
const KEYS = [
  ['A B', '1 0', 'L 1'], ['Größe', 'Ä', 'ß'], ["O'Neill", "'", "''"], ['A"B', '1"0', 'L"'], ['A","B', '1","0', 'L","1'], ['x","', 'y",""', '"'],
  ['A)>B', '1)>', ')>'], ['A")>B', '1")>0', '")>'], ['A&B', '&amp;', '&nbsp'], ['<b>', '</td>', '<hr>'], ['A_B', '_1_', '_'],
  ['(x)', 'f("a")', ');'], ['\\', '\\"', "\\'"], ['日本', '١', 'é']
];

function orders() {
  const order = ([o]) => `<record ServiceOrder="${escaped(o)}" State="N"><OrderStatus>15</OrderStatus><Description>Order ${escaped(o)}</Description></record>`;
  const activity = ([o, a]) => `<ServiceOrder ID="${escaped(o)}" State="N"><record Activity="${escaped(a)}" State="N"><ActivityStatus>15</ActivityStatus>` +
    `<ActivityDescription>Work</ActivityDescription><Object>OB</Object></record></ServiceOrder>`;
  const line = ([o, a, l]) => `<ServiceOrder ID="${escaped(o)}" Activity="${escaped(a)}" State="N"><record LineNumber="${escaped(l)}" State="N">` +
    '<Item>FLT-300</Item></record></ServiceOrder>';
  return '<harbrook><ccsocservcordr>' + KEYS.map(order).join('') + '</ccsocservcordr><ccsocservcactv>' + KEYS.map(activity).join('') +
    '</ccsocservcactv><ccsocservcmatl>' + KEYS.map(line).join('') + '</ccsocservcmatl><ccsocservclabr/><ccsocservcothr/><ccsocservchra/></harbrook>';
}

let browser;
let system;
let page;
before(async () => {
  browser = await launch();
  system = await startSystem({ filled: true, orders: orders() });
  page = await openPage(browser, system.address);
  await page.waitForSelector('#divList tr.tablerows');
  await page.evaluate(() => {
    const call = window.Tandril.transport.call;
    window.made = [];
    window.Tandril.transport.call = (method, args, done) => { window.made.push([method, ...args]); call(method, args, done); };
  });
});
after(async () => {
  await browser.close();
  await system.stop();
});

/** The arguments of the last call of a method since the last time, once it was made. */
async function asked(method) {
  await page.waitForFunction((name) => window.made.some(([made]) => made === name), method);
  return page.evaluate((name) => {
    const found = window.made.filter(([made]) => made === name).pop().slice(1);
    window.made = [];
    return found;
  }, method);
}

async function open(kind, keys) {
  await page.evaluate(([first, [order, activity, line]]) => {
    window.made = [];
    window.Tandril.closeRecord();
    window.Tandril.functions.showdetails(first, order, activity, line, '2');
  }, [kind, keys]);
  await page.waitForSelector('#divDetails .form');
}

const rowCalls = () => page.evaluate(() => window.Tandril.page.place('divList').shown.list.shown.map((row) => {
  const { call } = row.look();
  return call && call.args;
}));

test('EveryRowOfTheActivitiesOpensItsRecord', async () => {
  const expected = KEYS.flatMap(([order, activity]) => [['1', order, '', '', '2'], ['2', order, activity, '', '2']]);
  await comesTo(rowCalls, expected);
});

test('EveryRowOfTheCostLinesOpensItsRecord', async () => {
  await page.evaluate(() => window.Tandril.page.show('divList', { method: 'ViewCostLines_W', args: ['Material'], title: '' }));
  await seesView(page, 'divList', 'ViewCostLines_W');
  await comesTo(rowCalls, KEYS.flatMap(([order, activity, line]) =>
    [['1', order, '', '', '2'], ['2', order, activity, '', '2'], ['3', order, activity, line, '2']]));
});

/* All keys stand in the lists; these are opened, too. */
const OPENED = KEYS.filter(([order]) => ['A B', 'A","B', 'x","', 'A")>B', '<b>', '(x)'].includes(order));

for (const [order, activity, line] of OPENED) {
  const name = JSON.stringify([order, activity, line]);

  test(`AnOrderIsSavedAndGetsAnActivity ${name}`, async () => {
    await open('1', [order, '', '']);
    await page.fill('#divDetails [data-field=Description]', 'changed');
    await page.click('#btnSave');
    await page.waitForSelector('#message:not(:empty)');
    const [xml] = await asked('updatexml');
    assert.ok(xml.startsWith(`<harbrook><ccsocservcordr><record ServiceOrder="${escaped(order)}">`), xml);
    await page.waitForSelector('#message.good');
    await open('1', [order, '', '']);
    await page.click('#divDetails .create');
    assert.deepEqual(await asked('CreateForm'), ['2', order, '']);
  });

  test(`AnActivityReachesItsLinesAndItsMasterData ${name}`, async () => {
    await open('2', [order, activity, '']);
    await page.click('#divDetails .field:has([data-field=Object]) .zoom');
    await asked('OpenDataBase');
    await page.selectOption('#divCostHeader select', '1');
    assert.deepEqual(await asked('BuildCostLines'), ['1', order, activity]);
    await page.click('#divDetails .show');
    assert.deepEqual(await asked('ListCostLines'), ['Material', order, activity]);
    await page.waitForSelector('#divCosts tr.tablerows');
    await page.click('#divCosts tr.tablerows');
    assert.deepEqual(await asked('GetDetails'), ['3', order, activity, line, '', 2]);
    await page.waitForSelector('#divDetails [data-field=Item]');
    await page.click('#divDetails .create');
    assert.deepEqual(await asked('CreateForm'), ['3', order, activity]);
  });

  test(`ALineIsDeletedByItsKeys ${name}`, async () => {
    await open('3', [order, activity, line]);
    await page.click('#btnDelete');
    await page.click('.question .danger');
    assert.deepEqual(await asked('deleteNode'), [order, activity, line, 'material']);
    await page.waitForSelector('#message.good:has-text("Deleted")');
  });
}

/* There is no database, so looking something up ends in a fault. */
test('NothingElseWasComplainedOf', () => assert.deepEqual(page.problems.filter((problem) => !/status of 500/.test(problem)), []));
