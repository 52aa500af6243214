'use strict';

/* Windows on the master data, over the real host and the Access database of the samples. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { launch, openPage } = require('./support/browser');
const { startSystem } = require('./support/system');
const { comesTo, eventually, seesAnswers, seesCount, seesText } = require('./support/sees');

let browser;
let system;
let page;

before(async () => {
  browser = await launch();
  system = await startSystem({ filled: true, masterData: true });
  page = await openPage(browser, system.address);
  await page.waitForSelector('#divList tr.tablerows');
});
after(async () => {
  await browser.close();
  await system.stop();
});

const said = () => page.textContent('.settings .said');

async function choose(name) {
  await page.fill('#database', name);
  await page.keyboard.press('Enter');
  return eventually(async () => {
    const words = await said();
    assert.ok(words.includes(`"${name.replace(/\.mdb$/, '')}"`), words);
    return words;
  });
}

test('ADatabaseIsChosenInTheSettings', async () => {
  await page.click('#settings');
  await seesText(page, '#currentDatabase', 'none');
  await page.fill('#database', '../other');
  await page.keyboard.press('Enter');
  await seesText(page, '.settings .said.bad', /name of a file/);
  assert.match(await choose('other'), /no such database/);
  assert.match(await choose('tandril.mdb'), /now comes from "tandril"/);
  await seesText(page, '#currentDatabase', 'tandril');
  const registry = fs.readFileSync(path.join(system.home, 'registry.reg'), 'utf8');
  assert.match(registry, /"Currentmdb"="tandril"/);
  assert.match(registry, /"DBQ"="C:\\\\Vorn Tandril\\\\MasterData\\\\tandril\.mdb"/);
});

test('AnArchiveIsAskedToUnpackItself', async () => {
  const archive = path.join(system.home, 'Vorn Tandril', 'MasterData', 'delivery.exe');
  fs.writeFileSync(archive, '#!/bin/sh\nexit 0\n', { mode: 0o755 });
  await page.fill('#archive', 'delivery.exe');
  await page.click('.settings .line:has(#archive) button');
  await seesText(page, '.settings .said', /^"delivery" was started/);
  assert.equal(await page.$('.settings .said.bad'), null);
  await comesTo(() => system.host.log().split('/client20/ExplodeZip 200').length, 2);
});

test('AnArchiveThatIsMissingIsSaid', async () => {
  await page.fill('#archive', 'update-47');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.settings .said.bad');
  await seesText(page, '.settings .said', /update-47\.exe/);
  await page.keyboard.press('Escape');
  assert.equal(await page.evaluate(() => document.activeElement.id), 'settings');
});

const rows = () => page.$$eval('#divZoomHype tbody tr', (all) => all.map((row) => Array.from(row.cells, (cell) => cell.textContent.trim())));

test('TheObjectsOfTheConfigurationAreOfferedAndTaken', async () => {
  await page.click('#divList tr.tablerows:has-text("Find the burner fault") span.links');
  await page.click('.field:has([data-field=Object]) .zoom');
  await page.waitForSelector('#divZoomHype tr.tablerows');
  await comesTo(rows, [['C-300', 'OB-301', '1', 'Burner'], ['C-300', 'OB-302', '2', 'Feed pump']]);
  await page.click('#divZoomHype tr.tablerows:nth-child(2)');
  assert.equal(await page.$('#divZoomHype .panel'), null);
  assert.equal(await page.inputValue('#divDetails [data-field=Object]'), 'OB-302');
  assert.equal(await page.inputValue('#divDetails [data-field=ObjectNumber]'), '2');
});

test('TheFilterOfAWindowNarrowsIt', async () => {
  await page.click('.field:has([data-field=Configuration]) .zoom');
  await page.waitForSelector('#divZoomHype tr.tablerows');
  await eventually(async () => assert.ok((await rows()).length > 1));
  await page.fill('#divZoomHype input[type=search]', 'C-100');
  await comesTo(async () => (await rows()).map(([code]) => code), ['C-100']);
  await page.keyboard.press('Escape');
});

test('ALinkShowsOneRecord', async () => {
  await page.click('#divList button.link:has-text("PM01")');
  await page.waitForSelector('#divZoomHype dl');
  await seesText(page, '#divZoomHype dl', /PM01/);
  await page.keyboard.press('Escape');
});

test('ANewActivityOffersTheObjectsOfItsOrder', async () => {
  await page.click('#divList tr.orderrow:has-text("100202")');
  await page.click('.question .danger');
  await page.waitForSelector('#divDetails [data-form="order_100202"]');
  await page.click('#divDetails .create');
  await page.waitForSelector('#divDetails [data-form^="activity_100202"]');
  await page.click('.field:has([data-field=Object]) .zoom');
  await page.waitForSelector('#divZoomHype tr.tablerows');
  await comesTo(async () => [...new Set((await rows()).map(([configuration]) => configuration))], ['C-100']);
  await page.keyboard.press('Escape');
});

test('TheTablesAreListed', async () => {
  await page.click('#groupMasterData');
  await page.click('#menu [data-view=PROB]');
  await page.waitForSelector('#divList h2:has-text("Problems")');
  await seesCount(page, '#divList tbody tr', 6);
  assert.equal((await page.$$('#menu [data-view=CROB]')).length, 1);
});

test('AListedTableIsListedAgainAfterAChange', async () => {
  const listed = () => system.host.log().split('/client20/MasterData 200').length;
  const before = listed();
  await page.evaluate(() => window.Tandril.refreshLists());
  await comesTo(() => listed() - before, 1);
  await seesAnswers(page);
  await seesCount(page, '#divList tbody tr', 6);
  assert.equal(await page.textContent('#message'), '');
});

/* The database that is not there does not open, which the host answers with 500; nothing else may be wrong. */
test('NothingElseWasComplainedOf', () => {
  assert.equal(page.problems.length, 1);
  assert.match(page.problems[0], /status of 500/);
});
