'use strict';

/* The page over a host with prepared answers, as most tests need it. */

const { before, after } = require('node:test');
const assert = require('node:assert/strict');
const { launch, openPage } = require('./browser');
const { startMockHost } = require('./mock_host');
const { eventually } = require('./sees');

/** The one browser of a test file: a function that gives it while the tests run. */
function useBrowser() {
  let browser;
  before(async () => { browser = await launch(); });
  after(async () => { await browser.close(); });
  return () => browser;
}

/**
 * Runs act(page, host) on a page of its own over a host with these answers. The console may complain of nothing.
 * options: enterprise for the server's answers, and what openPage takes.
 */
async function withPage(browser, answers, options, act) {
  const { enterprise, ...rest } = options;
  const host = await startMockHost(answers, enterprise);
  const page = await openPage(browser, host.address, rest);
  try {
    await act(page, host);
    assert.deepEqual(page.problems, []);
  } finally {
    await page.context().close();
    await host.stop();
  }
}

/** The arguments of all calls of a method. */
const called = (host, method) => host.calls.filter((call) => call.method === method).map((call) => call.args);

/** Waits until a method was called so often. */
const waitForCall = (host, method, count = 1) =>
  eventually(() => assert.ok(called(host, method).length >= count, `${method} was not called`));

module.exports = { useBrowser, withPage, called, waitForCall };
