'use strict';

/*
 * What comes to be. A page writes when its host has answered, and a program logs when it comes to it, so a moment after a
 * press neither can be judged; these checks are repeated until they hold. Where something must not happen, wait for what
 * comes after it.
 */

const assert = require('node:assert/strict');

const { PATIENCE } = require('./browser');

const PAUSE = 20; /* milliseconds */

/** Repeats check() until it complains no more, and gives what it returns; at last its last complaint counts. */
async function eventually(check) {
  const end = Date.now() + PATIENCE;
  for (;;) {
    try {
      return await check();
    } catch (complaint) {
      if (!(complaint instanceof assert.AssertionError) || Date.now() > end) { throw complaint; }
    }
    await new Promise((resolve) => { setTimeout(resolve, PAUSE); });
  }
}

/** Waits until read() gives what is expected: a value, or a text that matches each of the patterns. */
function comesTo(read, ...expected) {
  return eventually(async () => {
    const found = await read();
    expected.forEach((wanted) => (wanted instanceof RegExp ? assert.match(String(found), wanted) : assert.deepEqual(found, wanted)));
  });
}

const seesText = (page, selector, ...expected) => comesTo(() => page.textContent(selector), ...expected);
const seesCount = (page, selector, count) => comesTo(() => page.$$eval(selector, (all) => all.length), count);

/** Waits until the focus is on an element that the selector names. */
const seesFocus = (page, selector) => eventually(async () => {
  const found = await page.evaluate((wanted) => (document.activeElement.matches(wanted) ? null : document.activeElement.outerHTML), selector);
  assert.equal(found, null, `the focus is not on ${selector} but on ${found && found.slice(0, 120)}`);
});

/** Waits until a place of the page shows what this method returns, and not the list or form before it. */
const seesView = (page, place, method) => comesTo(() => page.evaluate((name) => {
  const { view } = window.Tandril.page.place(name);
  return view && view.method;
}, place), method);

/** Waits until the calls that the page has asked for so far are answered: they are made in their order, this one last. */
const seesAnswers = (page) => page.evaluate(() => new Promise((resolve) => {
  window.Tandril.page.quietly('GetVariable', ['Mode'], resolve, resolve);
}));

module.exports = { eventually, comesTo, seesText, seesCount, seesFocus, seesView, seesAnswers };
