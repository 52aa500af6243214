'use strict';

/* The window that picks a date and a time writes mm/dd/yyyy and hhmm, whatever is spoken around it. */

const { test } = require('node:test');
const assert = require('node:assert/strict');
const { useBrowser, withPage } = require('./support/mock_page');
const f = require('./support/fragments');

const LIST = f.myActivities('My activities', ['Order', 'Activity'], [{ order: 'A1', activities: [{ number: '10', cells: [] }] }]);
const FORM = f.activityDetails('Activity', 'A1', '10', [
  f.fieldRow('Planned', f.dateInput('PlannedStartTime', '11/15/2026', '1032')), f.fieldRow('Actual', f.dateInput('ExecutionStartTime', '', ''))
]);
const PLANNED = '.field:has(#PlannedStartTime) .calendar';
const ACTUAL = '.field:has(#ExecutionStartTime) .calendar';

const browser = useBrowser();

const withForm = (locale, act) => withPage(browser(), { ListOrders: 'x', MyActivities: LIST, GetDetails: FORM }, { locale }, async (page) => {
  await page.clock.setFixedTime(new Date(2026, 10, 16, 7, 5));
  await page.click('#divList tr.tablerows');
  await page.waitForSelector('#divDetails .form');
  await act(page);
});

const stamp = (page, field) => page.$$eval(`#${field}, #${field}_time`, (inputs) => inputs.map((input) => input.value));

const WORDS = {
  'en-US': { days: 'Sun Mon Tue Wed Thu Fri Sat', day: 'Monday November 16 2026', title: 'Choose a date for Planned' },
  'en-GB': { days: 'Mon Tue Wed Thu Fri Sat Sun', day: 'Monday 16 November 2026', title: 'Choose a date for Planned' },
  'de-AT': { days: 'Mo Di Mi Do Fr Sa So', day: 'Montag 16. November 2026', title: 'Datum wählen: Planned' },
  'nl-NL': { days: 'ma di wo do vr za zo', day: 'maandag 16 november 2026', title: 'Datum kiezen: Planned' }
};

for (const [locale, words] of Object.entries(WORDS)) {
  test(`SpeaksTheLanguageAndWritesTheTextsOfTheForms ${locale}`, () => withForm(locale, async (page) => {
    assert.equal(await page.getAttribute(PLANNED, 'title'), words.title);
    await page.click(PLANNED);
    assert.equal(await page.$$eval('.days th', (heads) => heads.map((head) => head.textContent.replace('.', '')).join(' ')), words.days);
    await page.keyboard.press('ArrowRight');
    assert.equal(await page.evaluate(() => document.activeElement.getAttribute('aria-label').replace(/,/g, '')), words.day);
    await page.keyboard.press('Enter');
    assert.deepEqual(await stamp(page, 'PlannedStartTime'), ['11/16/2026', '1032']);
    assert.equal(await page.evaluate(() => document.activeElement.id), 'PlannedStartTime');
  }));
}

/* From Sunday, 15 November 2026, in weeks that begin on Monday. */
const KEYS = [
  ['ArrowLeft', '11/14/2026'], ['ArrowUp', '11/08/2026'], ['ArrowDown', '11/22/2026'], ['Home', '11/09/2026'], ['End', '11/15/2026'],
  ['PageUp', '10/15/2026'], ['PageDown', '12/15/2026'], ['Shift+PageUp', '11/15/2025'], ['Shift+PageDown', '11/15/2027']
];

test('EveryKeyLeadsToItsDay', () => withForm('en-GB', async (page) => {
  for (const [key, expected] of KEYS) {
    await page.fill('#PlannedStartTime', '11/15/2026');
    await page.click(PLANNED);
    await page.keyboard.press(key);
    await page.keyboard.press('Enter');
    assert.equal(await page.inputValue('#PlannedStartTime'), expected, key);
  }
}));

test('TheLastOfAMonthStaysInTheNextOne', () => withForm('en-GB', async (page) => {
  await page.fill('#PlannedStartTime', '01/31/2028');
  await page.click(PLANNED);
  await page.keyboard.press('PageDown');
  await page.keyboard.press('Enter');
  assert.equal(await page.inputValue('#PlannedStartTime'), '02/29/2028');
}));

test('DayHourAndMinuteArePickedByPointer', () => withForm('en-GB', async (page) => {
  await page.click(ACTUAL);
  await page.click('.picker .month button:last-child');
  await page.getByRole('button', { name: /^Friday,? 4 December 2026$/ }).click();
  await page.selectOption('.clock select:nth-of-type(1)', '14');
  await page.selectOption('.clock select:nth-of-type(2)', '45');
  await page.click('.picker .primary');
  assert.deepEqual(await stamp(page, 'ExecutionStartTime'), ['12/04/2026', '1445']);
}));

test('ADayAloneLeavesTheTimeEmpty', () => withForm('en-GB', async (page) => {
  await page.click(ACTUAL);
  await page.getByRole('button', { name: /^Tuesday,? 17 November 2026$/ }).dblclick();
  assert.deepEqual(await stamp(page, 'ExecutionStartTime'), ['11/17/2026', '']);
}));

test('NowIsOnePress', () => withForm('en-GB', async (page) => {
  await page.click(ACTUAL);
  await page.click('.picker .now');
  assert.deepEqual(await stamp(page, 'ExecutionStartTime'), ['11/16/2026', '0705']);
}));

test('EscapeLeavesTheFieldAsItWas', () => withForm('en-GB', async (page) => {
  await page.fill('#PlannedStartTime', 'soon');
  await page.click(PLANNED);
  await page.keyboard.press('PageDown');
  await page.keyboard.press('Escape');
  assert.deepEqual(await stamp(page, 'PlannedStartTime'), ['soon', '1032']);
  assert.equal(await page.$('.picker'), null);
}));
