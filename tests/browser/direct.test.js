'use strict';

/* The page without the web host, where the browser can make the COM object: a stand-in of it answers at once. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const { PATIENCE, launch } = require('./support/browser');
const { startMockHost } = require('./support/mock_host');
const { seesText } = require('./support/sees');
const f = require('./support/fragments');

const LIST = f.myActivities('My activities', ['Order', 'Activity'], [{ order: 'A1', activities: [{ number: '10', cells: [] }] }]);
const DETAILS = f.activityDetails('Activity', 'A1', '10', [f.fieldRow('Description', f.input('Description', 'Boiler'))]);

/* Runs in the page: an object whose methods, like those of COM, take a fixed number of arguments. */
function standIn(answers) {
  window.made = [];
  window.asked = [];
  const client = {};
  Object.keys(answers).forEach((method) => {
    client[method] = (...args) => {
      window.asked.push([method, ...args]);
      if (answers[method] === 'FAULT') { throw new Error('the log cannot be written'); }
      return answers[method] === null ? undefined : answers[method];
    };
  });
  window.ActiveXObject = function ActiveXObject(program) {
    window.made.push(program);
    return client;
  };
}

let browser;
let host;
before(async () => {
  browser = await launch();
  host = await startMockHost();
});
after(async () => {
  await browser.close();
  await host.stop();
});

async function openDirect(answers) {
  const context = await browser.newContext({ locale: 'en-GB' });
  context.setDefaultTimeout(PATIENCE);
  const page = await context.newPage();
  await page.addInitScript(standIn, {
    Initialize: '', FMapperXMLExists: true, ListOrders: 'x', MyActivities: LIST, GetVariable: 'Online', ShowErrorPool: '', GetMailContent: null,
    Get_Error: '1', GetDetails: DETAILS, CostLinesHeader: '', updatexml: '', ...answers
  });
  await page.goto(host.address);
  return page;
}

test('TheObjectAnswersInsteadOfTheHost', async () => {
  const page = await openDirect({});
  await page.click('#divList tr.tablerows');
  await page.waitForSelector('#divDetails .form');
  await page.fill('#Description', 'Burner');
  await page.click('#btnSave');
  await page.waitForSelector('#message.good');
  assert.deepEqual(await page.evaluate(() => window.made), ['Tandril.Client20']);
  const asked = await page.evaluate(() => window.asked);
  assert.deepEqual(asked[0], ['Initialize']);
  assert.deepEqual(asked.filter(([method]) => method === 'GetDetails')[0], ['GetDetails', '2', 'A1', '10', '', '', 2]);
  assert.match(asked.filter(([method]) => method === 'updatexml')[0][1], /<Description>Burner<\/Description>/);
  assert.deepEqual(host.calls, []);
  await page.context().close();
});

test('AFaultOfTheObjectIsShown', async () => {
  const page = await openDirect({ MyActivities: 'FAULT' });
  await page.waitForSelector('#message.bad');
  await seesText(page, '#message', /MyActivities ended in a fault: the log cannot be written/);
  await page.context().close();
});
