'use strict';

/* The page by keyboard: everything can be reached, the focus stays where the work is, and results are read out. */

const { test } = require('node:test');
const assert = require('node:assert/strict');
const { useBrowser, withPage, called, waitForCall } = require('./support/mock_page');
const { comesTo, seesFocus, seesText } = require('./support/sees');
const f = require('./support/fragments');

const LABELS = ['Service Order', 'Activity', 'Description', 'Standard'];
const activities = (numbers) => f.myActivities('My activities', LABELS, [{ order: 'A1', activities: numbers.map((number) =>
  ({ number, cells: [f.cell('Work ' + number), f.link('ReferenceActivity', 'REP', 'order')] })) }]);
const details = (kind, order, activity) => f.activityDetails('Activity', order, activity, [
  f.fieldRow('Description', f.input('Description', 'Work ' + activity)),
  f.fieldRow('Object', f.zoomInput('Object', 'OB-1', `activity_${order}_${activity}`)),
  f.fieldRow('Planned', f.dateInput('PlannedStartTime', '11/15/2026', '1030')), f.fieldRow('Notes', f.area('ActivityText', ''))
]);
const ZOOM = f.zoomWindow('Objects', 'CROB', ['Code', 'Text'], [['OB-1', 'Burner'], ['OB-2', 'Pump']]);

const browser = useBrowser();

const withWork = (answers, act, options = {}) => withPage(browser(), {
  ListOrders: 'x', MyActivities: activities(['10', '20', '30']), GetDetails: details, HyperLinkAndZoom: ZOOM, updatexml: '', deleteNode: null, ...answers
}, options, async (page, host) => {
  await seesText(page, '#divList .count', '3');
  await act(page, host);
});

const focused = (page, read) => page.evaluate(`(${read})(document.activeElement)`);
const focusedText = (page) => focused(page, '(element) => element.textContent.trim()');

/** Opens activity 20 by keyboard, as the third row of the list. */
async function openByKeyboard(page) {
  await page.focus('#divList tr[tabindex="0"]');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#divDetails .form');
}

test('TheTabKeyGoesThroughThePageInItsOrderWithAMarkThatIsSeen', () => withWork({}, async (page) => {
  await openByKeyboard(page);
  await page.evaluate(() => { document.activeElement.blur(); document.querySelector('.skip').focus(); });
  const seen = [];
  for (let i = 0; i < 60; i++) {
    seen.push(await focused(page, `(element) => ({
      part: ['.skip', '.top', '#menu', '#divList', '#divDetails'].findIndex((part) => element.closest(part)),
      isSeen: getComputedStyle(element).outlineStyle !== 'none', isSave: element.id === 'btnSave'
    })`));
    if (seen[seen.length - 1].isSave) { break; }
    await page.keyboard.press('Tab');
  }
  const parts = seen.map(({ part }) => part);
  assert.deepEqual(parts, [...parts].sort((a, b) => a - b));
  assert.deepEqual([...new Set(parts)], [0, 1, 2, 3, 4]);
  assert.ok(seen.every(({ isSeen }) => isSeen));
}));

test('TheFirstTabStopLeadsToTheList', () => withWork({}, async (page) => {
  await page.keyboard.press('Tab');
  await page.keyboard.press('Enter');
  await seesFocus(page, '#divList');
}));

/* [what is pressed, what is open then, what has the focus after Escape] */
const WINDOWS = [
  ['#settings', '.settings', '#settings'], ['#divDetails .zoom', '#divZoomHype', '#Object'], ['#divDetails .calendar', '.picker', '#PlannedStartTime'],
  ['#btnDelete', '.question', '#btnDelete']
];

test('AWindowHoldsTheFocusAndGivesItBack', () => withWork({}, async (page) => {
  await openByKeyboard(page);
  for (const [opener, shown, back] of WINDOWS) {
    await page.focus(opener);
    await page.keyboard.press('Enter');
    await page.waitForFunction((selector) => document.activeElement.closest(selector), shown);
    for (const key of [...Array(8).fill('Tab'), ...Array(8).fill('Shift+Tab')]) {
      await page.keyboard.press(key);
      assert.ok(await focused(page, `(element) => element.closest('${shown}') !== null`), `${shown} ${key}`);
    }
    await page.keyboard.press('Escape');
    await seesFocus(page, back);
  }
}));

test('ASaveKeepsTheFocusInItsFieldAndTheRow', () => withWork({}, async (page, host) => {
  await openByKeyboard(page);
  await page.focus('#ActivityText');
  await page.keyboard.type('Done');
  await page.keyboard.press('Control+S');
  await page.waitForSelector('#message.good');
  await waitForCall(host, 'GetDetails', 2);
  await comesTo(() => page.inputValue('#ActivityText'), '');
  await seesFocus(page, '#ActivityText');
  assert.match(called(host, 'updatexml')[0][0], /<ActivityText>Done<\/ActivityText>/);
  await page.focus('#divDetails .titles .icon-button');
  await page.keyboard.press('Enter');
  assert.match(await focusedText(page), /^20Work 20/);
}));

test('ASaveByItsButtonKeepsTheFocusThere', () => withWork({}, async (page) => {
  await openByKeyboard(page);
  await page.focus('#btnSave');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#message.good');
  await seesFocus(page, '#btnSave');
}));

test('TheSaveKeyNeedsAFormAndNoWindowOverIt', () => withWork({}, async (page, host) => {
  await page.keyboard.press('Control+S');
  await openByKeyboard(page);
  await page.click('#btnDelete');
  await page.keyboard.press('Control+S');
  assert.ok(await page.$('.question'));
  await page.keyboard.press('Escape');
  await page.keyboard.press('Control+S');
  await waitForCall(host, 'updatexml');
  assert.equal(called(host, 'updatexml').length, 1);
}));

test('AfterADeletionTheFocusIsOnTheRowInItsPlace', () => {
  let numbers = ['10', '20', '30'];
  return withWork({
    MyActivities: () => activities(numbers), deleteNode: () => { numbers = ['10', '30']; return null; }
  }, async (page) => {
    await openByKeyboard(page);
    await page.focus('#btnDelete');
    await page.keyboard.press('Enter');
    await page.keyboard.press('Tab');
    await page.keyboard.press('Enter');
    await comesTo(() => focusedText(page), /^30Work 30/);
  });
});

test('ArrowsLeadToTheLinksOfARowAndBack', () => withWork({}, async (page, host) => {
  await page.focus('#divList tr[tabindex="0"]');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('ArrowRight');
  assert.equal(await focusedText(page), 'REP');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#divZoomHype .panel');
  assert.deepEqual(called(host, 'HyperLinkAndZoom'), [[1, 'ReferenceActivity', 'REP', 'order']]);
  await page.keyboard.press('Escape');
  assert.equal(await focusedText(page), 'REP');
  await page.keyboard.press('ArrowLeft');
  assert.match(await focusedText(page), /^10Work 10/);
}));

test('ResultsAreReadOut', () => withWork({ updatexml: 'Not today' }, async (page) => {
  const live = (id) => page.$eval(id, (element) => [element.getAttribute('role'), element.getAttribute('aria-live'), element.textContent]);
  await seesText(page, '#news', 'My activities, records: 3');
  assert.deepEqual((await live('#news')).slice(0, 2), ['status', 'polite']);
  await page.fill('#divList input[type=search]', 'work 3');
  await seesText(page, '#news', 'My activities, records: 1 of 3');
  await page.click('#divList tr.tablerows .links');
  await page.click('#btnSave');
  await page.waitForSelector('.complaint:not(:empty)');
  assert.deepEqual(await live('.complaint'), ['alert', null, 'Not today']);
}));

test('AClosedListLeadsToItsEntryInTheMenu', () => withWork({}, async (page) => {
  await page.click('#divList .titles .icon-button');
  await comesTo(() => focusedText(page), 'My activities');
  assert.equal(await page.$('#menu [aria-current]'), null);
}));

test('OnASmallScreenTheMenuIsADrawer', () => withWork({}, async (page) => {
  const closes = () => comesTo(() => page.getAttribute('#menuToggle', 'aria-expanded'), 'false');
  await page.focus('#menuToggle');
  await page.keyboard.press('Enter');
  await comesTo(() => focusedText(page), 'My activities');
  await page.keyboard.press('Escape');
  await seesFocus(page, '#menuToggle');
  await closes();
  await page.click('#menuToggle');
  await page.mouse.click(500, 700);
  await closes();
  await page.click('#menuToggle');
  await page.click('#menu [data-view=cancelled]');
  await closes();
}, { viewport: { width: 600, height: 960 } }));
