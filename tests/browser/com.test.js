'use strict';

/* The synchronisation over the COM object, with the journal in the browser's storage: a whole one, and broken ones. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { launch } = require('./support/browser');
const { startCom } = require('./support/com');
const { comesTo, seesText } = require('./support/sees');

let browser;
let com;
let context;
let page;
before(async () => {
  browser = await launch();
  com = await startCom({ filled: true, masterData: true });
  context = await browser.newContext({ locale: 'en-GB', viewport: { width: 1440, height: 900 } });
  page = await com.open(context);
  await page.evaluate(() => {
    const client = new window.ActiveXObject('Tandril.Client20');
    client.SetCurrentmdb('tandril');
    client.SetODBCDataBase('tandril.mdb');
  });
});
after(async () => {
  await browser.close();
  await com.stop();
});

const store = () => fs.readFileSync(path.join(com.home, 'Vorn Tandril', 'Harbrook.xml'), 'utf8');
const journal = (window = page) => window.evaluate(() => (JSON.parse(localStorage.getItem('tandril.journal')) || {}).content || {});
const said = (step, window = page) => window.textContent(`[data-step=${step}] .said`);
const close = (window = page) => window.click('.shade .bar button');
const waits = (words) => seesText(page, '#syncState', words);

async function ended(window = page) {
  await window.waitForSelector('[data-result]');
  return window.$$eval('.steps li', (steps) => steps.map((step) => step.getAttribute('data-state')));
}

async function synchronise(window = page) {
  await window.click('#sync');
  return ended(window);
}

/** Changes the text of an activity, as the engineer does. */
async function edit(words) {
  await page.click('#divList tr.tablerows span.links');
  await page.waitForSelector('#divDetails .form');
  await page.fill('#divDetails [data-field=ActivityDescription]', words);
  await page.click('#btnSave');
  await page.waitForSelector('#message.good');
}

const DONE = ['done', 'done', 'done', 'done'];

test('TheDaysWorkIsSentAndNewWorkIsFetched', async () => {
  await edit('Burner cleaned');
  com.calls.length = 0;
  assert.deepEqual(await synchronise(), DONE);
  assert.match(await said('report'), /^\d+ accepted, \d+ refused/);
  assert.match(com.uploads[0], /Burner cleaned/);
  const order = ['CreateXMLStringForUpdate', 'DownloadErrors', 'DownloadXml', 'Synchronize_MasterData'];
  assert.deepEqual(com.calls.filter((method) => order.includes(method)), order);
  await close();
  await waits(/Synchronised just now/);
  const kept = await journal();
  assert.equal(kept.upload, undefined);
  assert.ok(Date.now() - kept.lastSync < 60000);
});

test('TheSameBytesGoOutAgainAfterALostConnectionAndFromANewWindow', async () => {
  await edit('Nozzle replaced');
  com.uploads.length = 0;
  com.faults.upload = (response) => response.destroy();
  assert.deepEqual(await synchronise(), ['failed', 'waiting', 'waiting', 'waiting']);
  assert.match(await said('send'), /connection was lost\. Your changes are kept here/);
  await close();
  await waits(/no answer yet/);
  assert.deepEqual([(await journal()).upload.state, (await journal()).upload.text], ['sent', com.uploads[0]]);
  const before = store();
  await page.close();
  page = await com.open(context);
  await waits(/no answer yet/);
  assert.deepEqual(await synchronise(), ['failed', 'waiting', 'waiting', 'waiting']);
  assert.equal(store(), before);
  delete com.faults.upload;
  await close();
  assert.deepEqual(await synchronise(), DONE);
  await close();
  assert.match(com.uploads[0], /Nozzle replaced/);
  assert.ok(com.uploads.length >= 3, 'a browser may try once more on its own');
  assert.equal(new Set(com.uploads).size, 1);
  assert.equal((await journal()).upload, undefined);
});

test('CancelEndsAServerThatHangs', async () => {
  com.uploads.length = 0;
  for (const [at, expected] of [['upload', ['failed', 'waiting', 'waiting', 'waiting']], ['orders', ['done', 'done', 'failed', 'waiting']]]) {
    await edit('Waits for ' + at);
    const arrived = new Promise((resolve) => { com.faults[at] = resolve; });
    await page.click('#sync');
    await arrived;
    await close();
    assert.deepEqual(await ended(), expected, at);
    await close();
    delete com.faults[at];
  }
  assert.match(com.uploads[0], /Waits for upload/);
  assert.equal(com.uploads[1], com.uploads[0]);
  assert.deepEqual(await synchronise(), DONE);
  await close();
  assert.equal(com.uploads.length, 3);
  assert.match(com.uploads[2], /Waits for orders/);
});

test('AWindowThatEndsWhileTheAnswerIsStoredLeavesItToTheNext', async () => {
  await edit('Answered');
  com.uploads.length = 0;
  await page.evaluate(() => { Tandril.transport.call = ((call) => function (method, args, done) {
    if (method !== 'DownloadErrors') { call(method, args, done); }
  })(Tandril.transport.call); });
  await page.click('#sync');
  await page.waitForSelector('[data-step=report][data-state=running]');
  assert.equal((await journal()).upload.state, 'answered');
  await page.close();
  page = await com.open(context);
  assert.deepEqual(await synchronise(), DONE);
  assert.match(await said('send'), /The answer was here already/);
  await close();
  assert.equal(com.uploads.length, 1);
});

test('OneWindowAtATime', async () => {
  const second = await com.open(context);
  const arrived = new Promise((resolve) => { com.faults.orders = resolve; });
  await page.click('#sync');
  await arrived;
  await comesTo(() => second.evaluate(() => window.Tandril.journal.isElsewhere()), true);
  assert.equal((await synchronise(second))[0], 'failed');
  assert.match(await said('send', second), /Another window/);
  await close();
  await ended();
  await close();
  await close(second);
  await comesTo(() => second.evaluate(() => window.Tandril.journal.isElsewhere()), false);
  delete com.faults.orders;
  assert.deepEqual((await synchronise(second)).slice(2), ['done', 'done']);
  await second.close();
});

test('WithoutRoomInTheStorageTheEngineerIsAsked', async () => {
  await edit('No room');
  com.uploads.length = 0;
  const before = store();
  await page.evaluate(() => {
    for (let size = 1 << 22; size > 0; size >>= 1) {
      try { localStorage.setItem('filler' + size, 'x'.repeat(size)); } catch (full) { continue; }
    }
  });
  await page.click('#sync');
  await page.waitForSelector('.shade .bar button:nth-child(2)');
  assert.match(await said('send'), /no room/);
  await close();
  await ended();
  await close();
  assert.deepEqual(com.uploads, []);
  assert.equal(store(), before);
  await page.evaluate(() => Object.keys(localStorage).filter((key) => /^filler/.test(key)).forEach((key) => localStorage.removeItem(key)));
  assert.deepEqual(await synchronise(), DONE);
});

test('NothingElseWasAskedFor', () => {
  assert.deepEqual(com.strangers, []);
});
