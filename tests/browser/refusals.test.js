'use strict';

/* Refused records over the real host and the sample enterprise server: the samples hold two slips that it refuses. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { launch, openPage } = require('./support/browser');
const { startSystem } = require('./support/system');
const { comesTo, seesAnswers } = require('./support/sees');

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

const file = (name) => fs.readFileSync(path.join(system.home, 'Vorn Tandril', name), 'utf8');
const refusedCount = () => page.evaluate(() => Number(/\((\d+)\)/.exec(document.getElementById('errorPool').textContent)?.[1] || 0));

async function synchronise() {
  await page.click('#sync');
  await page.waitForSelector('[data-result]');
  await page.click('.shade .bar button');
}

async function openRefused(words, kind = '') {
  await page.click('#errorPool button');
  await page.click(`#divList tr.tablerows:has-text("${words}"):has-text("${kind}")`);
  await page.waitForSelector('#divDetails .refusal');
}

test('TheServersWordsStandAboveTheRecord', async () => {
  await synchronise();
  await openRefused('FLT-3OO');
  assert.match(await page.textContent('#divDetails .refusal li'), /FLT-3OO/);
  assert.equal(await page.inputValue('#divDetails [data-field=Item]'), 'FLT-3OO');
});

test('ARefusedRecordIsSentAgainAsItIs', async () => {
  const count = await refusedCount();
  await page.click('#divDetails .refusal .again');
  await comesTo(refusedCount, count - 1);
  await page.waitForSelector('#divDetails .form');
  await seesAnswers(page);
  assert.equal(await page.$('#divDetails .refusal'), null);
  assert.doesNotMatch(file('UploadReport.xml'), /FLT-3OO/);
  assert.match(file('Harbrook.xml'), /State="[NM]"[^>]*>(?:(?!<\/record>)[^])*FLT-3OO/);
  await synchronise();
  await comesTo(refusedCount, count);
});

test('DiscardAsksAndTakesRecordAndRefusalAway', async () => {
  const count = await refusedCount();
  await openRefused('FLT-3OO');
  await page.click('#divDetails .refusal .discard');
  await page.waitForSelector('.question');
  assert.match(await page.textContent('.question'), /removed/);
  await page.keyboard.press('Escape');
  assert.match(file('UploadReport.xml'), /FLT-3OO/);
  await page.click('#divDetails .refusal .discard');
  await page.click('.question .danger');
  await page.waitForSelector('#message.good:has-text("Discarded")');
  assert.equal(await page.$('#divDetails .panel'), null);
  assert.doesNotMatch(file('UploadReport.xml'), /FLT-3OO/);
  assert.doesNotMatch(file('Harbrook.xml'), /FLT-3OO/);
  await comesTo(refusedCount, count - 1);
});

test('ADroppedUploadLeadsToItsRecordsAndLetsOthersGo', async () => {
  await page.click('[data-view=myActivities]');
  await page.click('#divList tr.tablerows:has-text("Find the burner fault") span.links');
  await page.fill('#divDetails [data-field=ActivityDescription]', 'Refused as a whole');
  await page.click('#btnSave');
  await page.waitForSelector('#message.good');
  await page.route('**/enterprise/upload', (route) => route.fulfill({ status: 422, contentType: 'text/plain', body: 'too many words' }));
  await page.click('#sync');
  await page.click('.shade .bar .danger');
  await page.click('[role=alertdialog] .danger');
  await page.waitForSelector('[data-result=good]');
  await page.click('.shade .bar button');
  await page.unroute('**/enterprise/upload');
  assert.match(file('UploadReport.xml'), /Order="100201" Activity="10" CostLine=""[^>]*too many words/);
  await openRefused('too many words', 'Activity:100201');
  assert.match(await page.textContent('#divDetails .refusal'), /status 422: too many words/);
  assert.equal(await page.inputValue('#divDetails [data-field=ActivityDescription]'), 'Refused as a whole');
  await page.click('#btnSave');
  await page.waitForSelector('#message.good');
  assert.doesNotMatch(file('UploadReport.xml'), /Order="100201" Activity="10" CostLine=""[^>]*too many words/);
  const [request] = await Promise.all([page.waitForRequest('**/enterprise/upload'), synchronise()]);
  assert.match(request.postData(), /Refused as a whole/);
});
