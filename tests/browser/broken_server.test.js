'use strict';

/*
 * The real host and component over an enterprise server that hangs, breaks off, answers with anything but what was asked
 * for, or takes its time, at each step of a synchronisation. The day's work stays, the same bytes go out again, and the
 * page says what happened.
 */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const http = require('node:http');
const os = require('node:os');
const path = require('node:path');
const { launch, openPage } = require('./support/browser');
const { addMasterData, fillHome, startHost } = require('./support/system');
const { seesText } = require('./support/sees');

const ANSWERS = {
  '/upload': '<UploadReport><File ID="1"/></UploadReport>',
  '/orders': '<harbrook><ccsocservcordr/></harbrook>',
  '/masterdata': '<masterdata><HBMasterData COMP="100"/></masterdata>'
};
const SIGN_IN = '<!DOCTYPE html><html><head><title>Sign in</title></head><body><p>Welcome to our network</p></body></html>';
const PAUSE = 60; /* milliseconds */

let browser;
let home;
let host;
let office;
let page;
before(async () => {
  home = fs.mkdtempSync(path.join(os.tmpdir(), 'tandril-broken-'));
  fillHome(home);
  addMasterData(home);
  [browser, office] = await Promise.all([launch(), startOffice()]);
  host = await startHost(home, office.address);
  page = await openPage(browser, host.address);
  await page.waitForSelector('#divList tr.tablerows');
  await page.evaluate(() => new Promise((done) => { Tandril.transport.call('SetCurrentmdb', ['tandril'], done); }));
  await page.evaluate(() => new Promise((done) => { Tandril.transport.call('SetODBCDataBase', ['tandril.mdb'], done); }));
});
after(async () => {
  await browser.close();
  await host.stop();
  office.stop();
  fs.rmSync(home, { recursive: true, force: true });
});

/* Answers with the text, a piece at a time when `pace` says so (milliseconds), and breaks off before its end when `cut`. */
async function send(response, status, text, { pace, cut } = {}) {
  const bytes = Buffer.from(text);
  const half = Math.ceil(bytes.length / 2);
  response.writeHead(status, { 'Content-Type': 'text/xml', 'Content-Length': bytes.length });
  response.write(bytes.subarray(0, half));
  if (pace) { await new Promise((resolve) => { setTimeout(resolve, pace); }); }
  if (cut) { response.destroy(); } else { response.end(bytes.subarray(half)); }
}

/* What can be wrong with an answer, and what the page says then about the upload and about what it fetches. */
const FAULTS = {
  cut: { answer: (response, text) => send(response, 200, text, { pace: 20, cut: true }), upload: /connection was lost/, other: /cannot be reached/ },
  dropped: { answer: (response) => response.destroy(), upload: /connection was lost/, other: /cannot be reached/ },
  half: { answer: (response, text) => send(response, 200, text.slice(0, -5)), upload: /cannot be read/, other: /only a part of it/ },
  empty: { answer: (response) => send(response, 200, ''), upload: /cannot be read/, other: /only a part of it/ },
  page: { answer: (response) => send(response, 200, SIGN_IN), upload: /sign in/, other: /sign in/ },
  wellFormedPage: { answer: (response) => send(response, 200, SIGN_IN.slice(15)), upload: /sign in/, other: /sign in/ },
  internalError: { answer: (response) => send(response, 500, 'out of memory\nat 0x1'), upload: /status 500: out of memory Your changes/ },
  errorPage: { answer: (response) => send(response, 500, SIGN_IN), upload: /status 500\. Your changes/, other: /status 500\. Nothing was changed/ },
  redirected: { answer: (response) => response.writeHead(302, { Location: '/login' }).end(), upload: /connection was lost/, other: /cannot be reached/ }
};

function startOffice() {
  const it = { received: [], fault: null, at: '', arrived: () => {} };
  const server = http.createServer((request, response) => {
    const chunks = [];
    request.on('data', (chunk) => chunks.push(chunk));
    request.on('end', () => {
      if (request.url === '/upload') { it.received.push(Buffer.concat(chunks).toString('utf8')); }
      it.arrived(request.url);
      if (request.url === it.at) { it.fault(response, ANSWERS[request.url]); } else { send(response, 200, ANSWERS[request.url]); }
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

const breakAt = (at, fault) => Object.assign(office, { at, fault });
const stored = (name) => fs.readFileSync(path.join(home, 'Vorn Tandril', name));
const files = () => [stored('Harbrook.xml'), stored('MasterData/tandril.mdb')];
const upload = () => JSON.parse(stored('PageJournal.json')).content.upload;
const said = (step) => page.textContent(`[data-step=${step}] .said`);

async function ended() {
  await page.waitForSelector('[data-result]');
  return page.$$eval('.steps li', (steps) => steps.map((step) => step.getAttribute('data-state')));
}

async function synchronise() {
  await page.click('#sync');
  return ended();
}

const close = () => page.click('.shade .bar button');

/** Synchronises against a server that never answers at `at`, and cancels. */
async function cancelAt(at) {
  breakAt(at, () => {});
  const arrived = new Promise((resolve) => { office.arrived = (url) => { if (url === at) { resolve(); } }; });
  await page.click('#sync');
  await arrived;
  await close();
  return ended();
}

/* The steps that fetch share their reading of answers. */
const FETCHED = ['cut', 'half', 'wellFormedPage', 'errorPage', 'redirected'];
const STEPS = { '/orders': ['download', 2], '/masterdata': ['masterData', 3] };

test('NoBrokenAnswerCountsAsAReport', async () => {
  let work;
  for (const [name, { answer, upload: words }] of Object.entries(FAULTS)) {
    breakAt('/upload', answer);
    assert.deepEqual(await synchronise(), ['failed', 'waiting', 'waiting', 'waiting'], name);
    assert.match(await said('send'), words, name);
    await close();
    work = work || files();
    assert.deepEqual(files(), work, name);
    assert.equal(upload().state, 'sent', name);
    await seesText(page, '#syncState', /no answer yet/);
  }
  assert.match(office.received[0], /State="[NM]"/);
  assert.deepEqual(office.received, Object.keys(FAULTS).map(() => office.received[0]));
});

test('AnUploadThatHangsIsCancelledAndGoesOutAgain', async () => {
  office.received.splice(1);
  assert.deepEqual(await cancelAt('/upload'), ['failed', 'waiting', 'waiting', 'waiting']);
  assert.match(await said('send'), /Cancelled\. The server may have your changes already/);
  await close();
  assert.equal(upload().state, 'sent');
  breakAt('', null);
  assert.deepEqual(await synchronise(), ['done', 'done', 'done', 'done']);
  await close();
  assert.deepEqual(office.received, Array(3).fill(office.received[0]));
  assert.equal(upload(), undefined);
});

for (const [at, [step, index]] of Object.entries(STEPS)) {
  const expected = ['done', 'skipped', 'done', 'done'].map((state, i) => (i < index ? state : i === index ? 'failed' : 'waiting'));

  test(`NoBrokenAnswerChangesAnything ${at}`, async () => {
    const work = files();
    for (const name of FETCHED) {
      const { answer, other } = FAULTS[name];
      breakAt(at, answer);
      assert.deepEqual(await synchronise(), expected, name);
      assert.match(await said(step), other, name);
      await close();
      assert.deepEqual(files(), work, name);
    }
  });

  test(`AnAnswerThatHangsIsCancelled ${at}`, async () => {
    const work = files();
    assert.deepEqual(await cancelAt(at), expected);
    assert.match(await said(step), /^Cancelled/);
    await close();
    assert.deepEqual(files(), work);
  });
}

test('ASlowServerIsWaitedFor', async () => {
  for (const at of Object.keys(STEPS)) {
    breakAt(at, (response, text) => send(response, 200, text, { pace: PAUSE }));
    assert.deepEqual(await synchronise(), ['done', 'skipped', 'done', 'done'], at);
    await close();
  }
});
