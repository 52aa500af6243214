'use strict';

/* The host is killed while an upload is under way, and started again over the same home: another port, an empty browser. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const http = require('node:http');
const os = require('node:os');
const path = require('node:path');
const { launch, openPage } = require('./support/browser');
const { fillHome, startHost } = require('./support/system');
const { eventually, seesText } = require('./support/sees');

const ORDERS = '<harbrook><ccsocservcordr/></harbrook>';

let browser;
let office;
let home;
before(async () => {
  browser = await launch();
  home = fs.mkdtempSync(path.join(os.tmpdir(), 'tandril-crash-'));
  fillHome(home);
  office = await startOffice();
});
after(async () => {
  await browser.close();
  office.stop();
  fs.rmSync(home, { recursive: true, force: true });
});

/* An enterprise server that takes uploads and does not answer them before isWell. */
function startOffice() {
  const it = { received: [], isWell: false };
  const server = http.createServer((request, response) => {
    const chunks = [];
    request.on('data', (chunk) => chunks.push(chunk));
    request.on('end', () => {
      const isUpload = request.url === '/upload';
      if (isUpload) { it.received.push(Buffer.concat(chunks).toString('utf8')); }
      if (isUpload && !it.isWell) { return; }
      response.writeHead(200, { 'Content-Type': 'text/xml' });
      response.end(isUpload ? '<UploadReport><File ID="1"/></UploadReport>' : ORDERS);
    });
  });
  it.stop = () => { server.closeAllConnections(); server.close(); };
  return new Promise((resolve) => {
    server.unref();
    server.listen(0, '127.0.0.1', () => {
      it.address = `http://127.0.0.1:${server.address().port}`;
      resolve(it);
    });
  });
}

const journal = () => JSON.parse(fs.readFileSync(path.join(home, 'Vorn Tandril', 'PageJournal.json'), 'utf8')).content;

test('AKilledHostSendsTheSameBytesAgain', async () => {
  const first = await startHost(home, office.address);
  const page = await openPage(browser, first.address);
  await page.waitForSelector('#divList tr.tablerows');
  await page.click('#sync');
  await eventually(() => assert.ok(office.received.length > 0));
  assert.equal(journal().upload.state, 'sent');
  assert.equal(journal().upload.text, office.received[0]);
  await first.kill();
  await page.context().close();

  office.received = [office.received[0]];
  office.isWell = true;
  const second = await startHost(home, office.address);
  const again = await openPage(browser, second.address);
  await seesText(again, '#syncState', /no answer yet/);
  await again.click('#sync');
  await again.waitForSelector('[data-result]');
  assert.deepEqual(await again.$$eval('.steps li', (steps) => steps.map((step) => step.getAttribute('data-state'))), ['done', 'done', 'done', 'skipped']);
  assert.equal(office.received.length, 2);
  assert.equal(office.received[1], office.received[0]);
  assert.match(office.received[0], /State="[NM]"/);
  assert.equal(journal().upload, undefined);
  await again.context().close();
  await second.stop();
});
