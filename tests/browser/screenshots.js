'use strict';

/* Makes the pictures of the documentation from the real system over the sample data: node screenshots.js [FOLDER] */

const fs = require('node:fs');
const path = require('node:path');
const { launch, openPage } = require('./support/browser');
const { startSystem, ROOT } = require('./support/system');

const FOLDER = process.argv[2] || path.join(ROOT, 'docs', 'images');

async function openActivity(page) {
  await page.click('#divList tr.tablerows:nth-child(3)');
  await page.waitForSelector('#divCostHeader .panel');
}

async function openPicker(page) {
  await openActivity(page);
  await page.click('.field:has([data-field=ExecutionStartTime]) .calendar');
  await page.waitForSelector('.picker');
}

const PICTURES = [
  { name: 'my-activities', open: openActivity },
  { name: 'my-activities-dark', colorScheme: 'dark', open: openActivity },
  { name: 'tablet', viewport: { width: 1024, height: 600 }, open: openPicker }
];

async function main() {
  fs.mkdirSync(FOLDER, { recursive: true });
  const browser = await launch();
  for (const { name, open, ...options } of PICTURES) {
    const system = await startSystem({ filled: true });
    const page = await openPage(browser, system.address, { viewport: { width: 1440, height: 900 }, ...options });
    await page.waitForSelector('#divList tr.tablerows');
    await open(page);
    await page.waitForLoadState('networkidle');
    await page.screenshot({ path: path.join(FOLDER, name + '.png') });
    await page.context().close();
    await system.stop();
  }
  await browser.close();
}

main().catch((error) => {
  console.error(error);
  process.exit(1);
});
