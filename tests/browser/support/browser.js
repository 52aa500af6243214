'use strict';

/* One Chromium per test file. */

const { chromium } = require('playwright-core');

const PROGRAM = process.env.CHROMIUM || '/usr/bin/chromium';

/* A machine under load is slow, but not wrong. */
const PATIENCE = 60000; /* milliseconds */

function launch() {
  const isRoot = typeof process.getuid === 'function' && process.getuid() === 0;
  return chromium.launch({
    executablePath: PROGRAM, headless: true, timeout: 3 * PATIENCE, args: ['--disable-gpu', '--disable-dev-shm-usage'].concat(isRoot ? ['--no-sandbox'] : [])
  });
}

/* How many times slower than the machine the pages run, which finds tests that do not wait for what they look at. */
const SLOWDOWN = Number(process.env.TANDRIL_PAGE_SLOWDOWN || 1);

async function slowDown(page) {
  if (SLOWDOWN <= 1) { return; }
  const session = await page.context().newCDPSession(page);
  await session.send('Emulation.setCPUThrottlingRate', { rate: SLOWDOWN });
}

/** A page that fails its test on an uncaught error of a script; page.problems holds what the console complained of. */
async function openPage(browser, address, options = {}) {
  const context = await browser.newContext({ locale: 'en-GB', viewport: { width: 1440, height: 900 }, ...options });
  context.setDefaultTimeout(PATIENCE);
  const page = await context.newPage();
  page.problems = [];
  page.on('pageerror', (error) => page.problems.push(String(error)));
  page.on('console', (message) => { if (message.type() === 'error') { page.problems.push(message.text()); } });
  await slowDown(page);
  await page.goto(address);
  return page;
}

module.exports = { PATIENCE, launch, openPage };
