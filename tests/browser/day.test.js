'use strict';

/* A working day over the real host and the sample enterprise server, from an empty computer on. The tests are its hours. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { launch, openPage } = require('./support/browser');
const { startSystem } = require('./support/system');
const { comesTo, eventually, seesText, seesView } = require('./support/sees');

let browser;
let system;
let page;

before(async () => {
  browser = await launch();
  system = await startSystem();
  page = await openPage(browser, system.address);
  await page.waitForSelector('#divList tr.tablerows');
});
after(async () => {
  await browser.close();
  await system.stop();
});

const store = () => fs.readFileSync(path.join(system.home, 'Vorn Tandril', 'Harbrook.xml'), 'utf8');

async function synchronise() {
  await page.click('#sync');
  await page.waitForSelector('[data-result]');
  const steps = await page.$$eval('.steps li', (all) => all.map((step) => [step.getAttribute('data-state'), step.textContent]));
  await page.click('.shade .bar button');
  return steps;
}

async function save() {
  await page.click('#btnSave');
  await page.waitForSelector('#message:not(:empty)');
  assert.equal(await page.getAttribute('#message', 'class'), 'message good', await page.textContent('#message'));
}

test('TheFirstRunFetchesTheWork', async () => {
  assert.match(await page.textContent('#message'), /Your work has been fetched/);
  await seesText(page, '#syncState', /just now/);
  await eventually(async () => assert.ok((await page.$$('#divList tr.orderrow')).length >= 10));
});

test('AnEditIsStoredAndWaits', async () => {
  await page.click('#divList tr.tablerows:has-text("Find the burner fault") span.links');
  await page.fill('#divDetails [data-field=ExecutionStartTime]', '11/16/2026');
  await page.fill('#divDetails [data-field=ExecutionStartTime_time]', '0735');
  await page.fill('#divDetails [data-field=ActivityDescription]', 'Found & fixed the "burner" <fault>');
  await save();
  assert.match(store(), /<ActivityDescription>Found &amp; fixed the "burner" &lt;fault(&gt;|>)<\/ActivityDescription>/);
  assert.match(store(), /<ExecutionStartTime>20261116 073500<\/ExecutionStartTime>/);
  await page.waitForSelector('#divList tr.tablerows:has-text("Found & fixed")');
});

test('ANewActivityIsAdded', async () => {
  await page.click('[data-view=newActivity]');
  await page.waitForSelector('#divDetails [data-field=ServiceOrder]');
  await page.selectOption('#divDetails [data-field=ServiceOrder]', '100201');
  await page.fill('#divDetails [data-field=ActivityDescription]', 'Second visit');
  await page.fill('#divDetails [data-field=PlannedStartTime]', '11/17/2026');
  await page.fill('#divDetails [data-field=PlannedFinishTime]', '11/17/2026');
  await page.fill('#divDetails [data-field=PlannedFinishTime_time]', '1200');
  await save();
  await page.waitForSelector('#divDetails #btnDelete');
  assert.match(store(), /Activity="_1"[^>]*>\s*<ActivityStatus>15</);
});

test('HoursAreRegisteredAndListed', async () => {
  await page.click('[data-view=newHours]');
  await page.waitForSelector('#divDetails [data-form^=hra]');
  await page.fill('#divDetails [data-field=Description]', 'Tidied the van');
  await page.fill('#divDetails [data-field=StartDate]', '11/16/2026');
  await page.fill('#divDetails [data-field=StartDate_time]', '1500');
  await page.fill('#divDetails [data-field=EndDate]', '11/16/2026');
  await page.fill('#divDetails [data-field=EndDate_time]', '2300');
  const hours = await page.$('#divDetails [data-field=Hours]');
  await hours.fill('99');
  await save();
  await page.click('#groupHours');
  await page.click('[data-view=hoursOpen]');
  await page.waitForSelector('#divList tr.tablerows:has-text("Tidied the van")');
});

test('TheSynchronisationSendsAndFetches', async () => {
  await seesText(page, '#syncState', /changes waiting/);
  const steps = await synchronise();
  assert.deepEqual(steps.map(([state]) => state), ['done', 'done', 'done', 'skipped']);
  assert.match(steps[1][1], /\d+ accepted, [1-9]\d* refused/);
  await seesText(page, '#syncState', /nothing waits/);
});

test('ARefusedRecordIsCorrectedAndSentAgain', async () => {
  await page.click('#errorPool button');
  await seesView(page, 'divList', 'ShowErrorList');
  const refused = () => page.$$eval('#divList tr.tablerows', (rows) => rows.length);
  const count = await refused();
  await page.click('#divList tr.tablerows:has-text("FLT-3OO")');
  await page.fill('#divDetails [data-field=Item]', 'FLT-300');
  await save();
  await comesTo(refused, count - 1);
  await seesText(page, '#syncState', /changes waiting: 1/);
  const steps = await synchronise();
  assert.match(steps[1][1], /\d+ accepted, 0 refused/);
  await seesText(page, '#syncState', /nothing waits/);
});

test('ALocalRecordIsDeleted', async () => {
  await page.click('[data-view=newOrder]');
  await page.waitForSelector('#divDetails [data-form^=order]');
  await page.fill('#divDetails [data-field=Description]', 'To be deleted');
  await page.fill('#divDetails [data-field=OrderDate]', '11/16/2026');
  await save();
  assert.match(store(), /To be deleted/);
  await page.waitForSelector('#btnDelete');
  await page.click('#btnDelete');
  await page.click('.question .danger');
  await page.waitForSelector('#message.good:has-text("Deleted")');
  assert.doesNotMatch(store(), /To be deleted/);
});

test('WithoutTheServerTheDayGoesOn', async () => {
  await system.enterprise.stop();
  const steps = await synchronise();
  assert.deepEqual(steps.map(([state]) => state), ['failed', 'waiting', 'waiting', 'waiting']);
  await page.click('[data-view=myActivities]');
  await page.waitForSelector('#divList tr.tablerows');
});

test('NothingElseWasComplainedOf', () => {
  assert.deepEqual(page.problems.filter((problem) => !/status of 502/.test(problem)), []);
});
