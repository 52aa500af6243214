'use strict';

/*
 * A walk past every view and every window of the page, over the real system with the sample data and their master data.
 * STOPS are [name, open(page)] in their order: each takes up what the one before has left. No stop knows the language.
 */

const ACTIVITY = '#divList tr.tablerows:nth-child(2)'; /* the first of order 100201 */

async function openMenu(page, view) {
  await page.$$eval('#menu details', (groups) => groups.forEach((group) => { group.open = true; }));
  const toggle = await page.$('#menuToggle');
  if (await toggle.isVisible() && await toggle.getAttribute('aria-expanded') === 'false') { await toggle.click(); }
  if (view) { await page.click(`#menu [data-view=${view}]`); }
}

const list = (view, shown = '#divList tr.tablerows') => [view, async (page) => {
  await page.$eval('#divList', (place) => place.replaceChildren());
  await openMenu(page, view);
  await page.waitForSelector(shown);
}];

const form = (view, name) => [view, async (page) => {
  await openMenu(page, view);
  await page.waitForSelector(`#divDetails [data-form^=${name}]`);
}];

async function openActivity(page) {
  await page.$eval('#divCostHeader', (place) => place.replaceChildren());
  await page.click(`${ACTIVITY} .links`);
  await page.waitForSelector('#divCostHeader select');
}

const STOPS = [
  ['start', (page) => page.waitForSelector('#divList tr.tablerows')],
  ['menu', async (page) => {
    await openMenu(page);
    await page.waitForFunction(() => /[a-z]/.test(document.querySelector('[data-view=CROB]')?.textContent || ''));
  }],
  list('myActivities'),
  ['activity', openActivity],
  ['costs', async (page) => {
    await page.selectOption('#divCostHeader select', '1');
    await page.click('#divDetails .show');
    await page.waitForSelector('#divCosts tr.tablerows');
    await page.waitForSelector('#divCostLines tr.tablerows');
  }],
  ['problem', async (page) => {
    await page.fill('#divDetails [data-field=ExecutionStartTime]', 'x');
    await page.click('#btnSave');
    await page.waitForSelector('#divDetails [aria-invalid=true]');
  }],
  ['discardQuestion', async (page) => {
    await openMenu(page, 'newOrder');
    await page.waitForSelector('.question');
  }],
  ['newOrder', async (page) => {
    await page.click('.question .danger');
    await page.waitForSelector('#divDetails [data-form^=order]');
  }],
  form('newActivity', 'activity'), form('newMaterial', 'material'), form('newHours', 'hra'),
  ['deleteQuestion', async (page) => {
    await list('orders')[1](page);
    await page.click('#divList tr.tablerows:has-text("_9001") .links');
    await page.waitForSelector('#btnDelete');
    await page.click('#btnDelete');
    await page.waitForSelector('.question');
  }],
  ['order', (page) => page.keyboard.press('Escape')],
  ...['hours', 'hoursOpen', 'hoursSent', 'materialOpen', 'labourOpen', 'otherOpen', 'materialSent', 'labourSent', 'otherSent',
    'activitiesOpen', 'activitiesSent', 'completed', 'ordersOpen', 'ordersSent', 'cancelled', 'PROB', 'CROB'].map((view) => list(view)),
  ['synchronisation', async (page) => {
    await page.click('#sync');
    await page.waitForSelector('[data-result=good]');
  }],
  ['emptyList', async (page) => {
    await page.click('.shade .bar button');
    await list('cancelled', '#divList .empty')[1](page);
  }],
  ['refusedList', async (page) => {
    await page.click('#errorPool button');
    await page.waitForSelector('#divList tr.tablerows');
  }],
  ['refusedRecord', async (page) => {
    await page.click('#divList tr.tablerows .links');
    await page.waitForSelector('.refusal');
  }],
  ['refusalQuestion', async (page) => {
    await page.click('.refusal .discard');
    await page.waitForSelector('.question');
  }],
  ['zoom', async (page) => {
    await page.keyboard.press('Escape');
    await list('myActivities')[1](page);
    await openActivity(page);
    await page.click('.field:has([data-field=Configuration]) .zoom');
    await page.waitForSelector('#divZoomHype tr.tablerows');
  }],
  ['picker', async (page) => {
    await page.keyboard.press('Escape');
    await page.click('#divDetails .calendar');
    await page.waitForSelector('.picker');
  }],
  ['hyperlink', async (page) => {
    await page.keyboard.press('Escape');
    await page.$eval(`${ACTIVITY} .link`, (link) => link.click());
    await page.waitForSelector('#divZoomHype dl');
  }],
  ['settings', async (page) => {
    await page.keyboard.press('Escape');
    await page.click('#settings');
    await page.waitForFunction(() => document.getElementById('currentDatabase').textContent !== '');
  }],
  ['draft', async (page) => {
    await page.keyboard.press('Escape');
    await page.fill('#divDetails [data-field=ActivityDescription]', 'x');
    await page.waitForFunction(() => Object.keys(localStorage).some((key) => key.startsWith('tandril.draft.')));
    await page.reload();
    await page.waitForSelector(ACTIVITY);
    await openActivity(page);
    await page.waitForSelector('.draft');
  }],
  ['offline', async (page) => {
    await page.click('#mode');
    await page.waitForSelector('#mode[data-mode=Offline]');
  }]
];

/** Lists that look like another one of the walk; not everything has to be looked at there again. */
const isAlike = (name) => /^(hours|material|labour|other|activities|orders)(Open|Sent)$/.test(name) && name !== 'materialOpen';

module.exports = { STOPS, isAlike };
