'use strict';

/*
 * Every view and every window, seen by axe-core in light and dark, and on the screens of a 7-inch tablet, upright and
 * lying, where nothing may be cut off or too small for a finger.
 */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const { launch, openPage } = require('./support/browser');
const { startSystem } = require('./support/system');
const { comesTo } = require('./support/sees');
const { STOPS, isAlike } = require('./support/tour');

const AXE = fs.readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');
const DESK = { width: 1440, height: 900 };
const UPRIGHT = { width: 600, height: 960 };
const LYING = { width: 1024, height: 600 };
const FINGER = 44;

let browser;
let system;
let page;

before(async () => {
  browser = await launch();
  system = await startSystem({ filled: true, masterData: 'chosen' });
  page = await openPage(browser, system.address, { viewport: DESK, bypassCSP: true });
  await page.context().addInitScript(AXE);
  await page.reload();
});
after(async () => {
  await browser.close();
  await system.stop();
});

async function resize(viewport) {
  await page.setViewportSize(viewport);
  await comesTo(() => page.evaluate(() => ({ width: window.innerWidth, height: window.innerHeight })), viewport);
}

/* What is wider than the screen, apart from tables, which scroll inside of their panel. */
const tooWide = () => page.evaluate(() => {
  const isOut = (element) => {
    const { left, right, width } = element.getBoundingClientRect();
    return width > 0 && (left < -0.5 || right > window.innerWidth + 0.5);
  };
  const all = Array.from(document.querySelectorAll('body *')).filter((element) =>
    isOut(element) && !element.closest('.rows, .unseen, .skip') && getComputedStyle(element).visibility === 'visible');
  return [document.documentElement.scrollWidth > window.innerWidth ? 'the page scrolls sideways' : '', ...all.map((element) =>
    element.outerHTML.slice(0, 80))].filter(Boolean);
});

/* What can be pressed and is too small for it. The marks of a file's own that are not seen do not count. */
const tooSmall = () => page.evaluate((least) =>
  Array.from(document.querySelectorAll('button, input, select, textarea, summary, tr.opens')).filter((element) => {
    const { width, height } = element.getBoundingClientRect();
    const isShown = element.checkVisibility({ visibilityProperty: true, opacityProperty: true });
    return isShown && (width < least - 0.5 || height < least - 0.5);
  }).map((element) => `${element.outerHTML.slice(0, 80)} ${element.getBoundingClientRect().width}x${element.getBoundingClientRect().height}`), FINGER);

/* The colours are all that differs in the dark. */
async function violations(colorScheme) {
  await page.emulateMedia({ colorScheme });
  const found = await page.evaluate((isDark) => window.axe.run(document, {
    resultTypes: ['violations'], ...(isDark ? { runOnly: { type: 'rule', values: ['color-contrast'] } } : {})
  }), colorScheme === 'dark');
  return found.violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html).join(' | ')}`);
}

for (const [name, open] of STOPS) {
  test(`IsAccessibleAndFits_${name}`, async () => {
    await open(page);
    assert.deepEqual(await violations('light'), [], 'light');
    assert.deepEqual(await violations('dark'), [], 'dark');
    if (isAlike(name)) { return; }
    for (const viewport of [LYING, UPRIGHT]) {
      await resize(viewport);
      assert.deepEqual(await tooWide(), [], JSON.stringify(viewport));
      assert.deepEqual(await tooSmall(), [], JSON.stringify(viewport));
    }
    await resize(DESK);
  });
}

test('NothingWasComplainedOf', () => assert.deepEqual(page.problems, []));
