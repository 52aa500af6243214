'use strict';

/* A page that ends in the middle of a synchronisation, at every step of the upload, and another one that goes on. */

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const { launch, openPage } = require('./support/browser');
const { startMockHost } = require('./support/mock_host');
const { comesTo, eventually, seesText } = require('./support/sees');

const UPLOAD = '<harbrook><ccsocservcordr><record ServiceOrder="A1" State="M"><F>ü</F></record></ccsocservcordr></harbrook>';
const REPORT = '<Report><File ID="1"><Entry Status="Completed" Order="A1"/></File></Report>';
const SERVER = { upload: REPORT, orders: '<harbrook/>', masterdata: '<extract/>' };

const never = () => new Promise(() => {});
const later = (milliseconds, value) => new Promise((resolve) => { setTimeout(() => resolve(value), milliseconds); });

let browser;
const hosts = [];
before(async () => { browser = await launch(); });
after(async () => {
  await browser.close();
  await Promise.all(hosts.map((host) => host.stop()));
});

async function startHost(answers, enterprise) {
  const host = await startMockHost(answers, enterprise);
  hosts.push(host);
  return host;
}

/* A component with one changed record: asked for the upload it marks the record as sent, an edit marks it as changed. */
function component() {
  const store = { state: 'M', uploads: 0 };
  return {
    store,
    answers: {
      ListOrders: 'x', DownloadErrors: '', Synchronize_MasterData: 'SUCCESSFUL', DownloadXml: 'done',
      GetVariable: (name) => (name === 'Mode' ? 'Online' : 'db'),
      GetMailContent: () => UPLOAD.replace('"M"', `"${store.state}"`),
      updatexml: () => { store.state = 'M'; return ''; },
      CreateXMLStringForUpdate: () => {
        if (store.state !== 'M') { return ''; }
        store.state = 'MU';
        store.uploads += 1;
        return UPLOAD;
      }
    }
  };
}

async function open(host) {
  const page = await openPage(browser, host.address);
  await page.waitForSelector('#divList .note');
  return page;
}

async function synchronise(page) {
  await page.click('#sync');
  await page.waitForSelector('[data-result]');
  return page.$$eval('.steps li', (steps) => steps.map((step) => step.getAttribute('data-state')));
}

const upload = (host) => host.journal.content && host.journal.content.upload;

const until = (condition) => eventually(() => assert.ok(condition(), 'it did not come to it'));
const isCalled = (host, method) => host.calls.some((call) => call.method === method);

/* Where the page ends: what hangs there, the last call, what the journal says then, how often the bytes reach the server. */
const CRASHES = {
  beforeTheChangesAreAskedFor: {
    hang: ({ answers }) => { answers.CreateXMLStringForUpdate = never; }, asked: 'CreateXMLStringForUpdate', state: 'preparing', posts: 1
  },
  beforeTheChangesArrive: {
    hang: ({ answers, store }) => { answers.CreateXMLStringForUpdate = () => { store.state = 'MU'; return never(); }; },
    asked: 'CreateXMLStringForUpdate', state: 'preparing', posts: 1
  },
  beforeTheFirstByte: { hang: ({ host }) => { host.hangAfter = 'prepared'; }, state: 'prepared', posts: 1 },
  whileTheBytesAreUnderWay: { hang: ({ enterprise }) => { enterprise.upload = 'hang'; }, state: 'sent', posts: 2 },
  beforeTheAnswerIsStored: { hang: ({ answers }) => { answers.DownloadErrors = never; }, asked: 'DownloadErrors', state: 'answered', posts: 1 }
};

for (const [name, { hang, asked, state, posts }] of Object.entries(CRASHES)) {
  test(`NothingIsLostOrSentTwice_${name}`, async () => {
    const { store, answers } = component();
    const healthy = { ...answers };
    const received = [];
    const enterprise = { ...SERVER, upload: (body) => { received.push(body); return REPORT; } };
    const host = await startHost(answers, enterprise);
    const first = await open(host);
    hang({ answers: host.answers, enterprise, store, host });
    if (enterprise.upload === 'hang') { enterprise.upload = (body) => { received.push(body); return 'hang'; }; }
    await first.click('#sync');
    await until(() => upload(host) && upload(host).state === state && (state !== 'sent' || received.length) && (!asked || isCalled(host, asked)));
    await first.context().close();

    Object.assign(host.answers, healthy);
    host.hangAfter = undefined;
    enterprise.upload = (body) => { received.push(body); return REPORT; };
    const second = await open(host);
    assert.deepEqual(await synchronise(second), ['done', 'done', 'done', 'done']);
    assert.deepEqual(received, Array(posts).fill(UPLOAD));
    assert.equal(host.calls.filter((call) => call.method === 'DownloadErrors').pop().args[0], REPORT);
    assert.equal(upload(host), undefined);
    await second.context().close();
  });
}

test('TheUploadIsKeptInEveryStateBeforeTheNextStep', async () => {
  const { answers } = component();
  const order = [];
  const host = await startHost(answers, {
    ...SERVER, upload: () => { order.push('post'); return REPORT; }
  });
  const note = (entry) => order.push(entry);
  host.answers.CreateXMLStringForUpdate = () => { note('create'); return UPLOAD; };
  host.answers.DownloadErrors = () => { note('store'); return ''; };
  host.onKept = ({ upload: kept }) => {
    const state = kept ? kept.state : order.includes('store') ? 'settled' : '';
    if (state && order[order.length - 1] !== state) { note(state); }
  };
  const page = await open(host);
  await synchronise(page);
  assert.deepEqual(order, ['preparing', 'create', 'prepared', 'sent', 'post', 'answered', 'store', 'settled']);
  await page.context().close();
});

/* The component marks a confirmed record as changed again, edited or not. */
for (const [name, edit, words] of [['AConfirmedRecordWaitsNoMore', () => {}, /nothing waits/],
  ['AnEditMadeWhileTheUploadIsUnderWayWaits', (store) => { store.state = 'M'; }, /changes waiting: 1/]]) {
  test(name, async () => {
    const { store, answers } = component();
    const host = await startHost(answers, { ...SERVER, upload: () => { edit(store); return REPORT; } });
    host.answers.DownloadErrors = () => { store.state = 'N'; return ''; };
    const page = await open(host);
    assert.deepEqual(await synchronise(page), ['done', 'done', 'done', 'done']);
    await seesText(page, '#syncState', /just now/, words);
    await page.context().close();
  });
}

const ago = (minutes) => Date.now() - minutes * 60000;
const header = (page, words) => seesText(page, '#syncState', words);

/* What the journal says, and the header's words for it. */
const HEADERS = {
  nothing: [() => ({}), 'Never synchronised \u00b7 changes waiting: 1'],
  aSuccess: [() => ({ lastSync: ago(0) }), 'Synchronised just now \u00b7 changes waiting: 1'],
  ages: [() => ({ lastSync: ago(200), waitingSince: ago(100), upload: { state: 'sent', text: UPLOAD, time: ago(3 * 1440) } }),
    'Synchronised 3 h ago \u00b7 changes waiting: 1 (for 100 min) \u00b7 one upload has no answer yet, records in it: 1 (for 3 days)'],
  anInterruption: [() => ({ lastSync: ago(12), upload: { state: 'preparing', keys: ['A1'], time: ago(0) } }),
    'Synchronised 12 min ago \u00b7 changes waiting: 1 \u00b7 an upload was interrupted before it left'],
  aRefusal: [() => ({ lastSync: ago(4000), upload: { state: 'refused', text: UPLOAD, reason: 'no', time: ago(130) } }),
    'Synchronised 2 days ago \u00b7 changes waiting: 1 \u00b7 one upload was refused (for 2 h)']
};

for (const [name, [content, words]] of Object.entries(HEADERS)) {
  test(`TheHeaderSays_${name}`, async () => {
    const host = await startHost(component().answers, SERVER);
    host.journal = { revision: 3, content: content() };
    const page = await open(host);
    await header(page, words);
    await page.context().close();
  });
}

test('TheHeaderKnowsTheFirstRunOnASlowDisk', async () => {
  let orders = '';
  const host = await startHost({ ListOrders: () => orders, DownloadXml: () => { orders = 'x'; return 'done'; } }, SERVER);
  host.beforeWrite = () => later(500);
  const page = await open(host);
  await header(page, 'Synchronised just now \u00b7 nothing waits');
  await page.context().close();
});

/* A report may leave records out; those it refuses stand in the list of refusals. */
for (const [name, entry, words] of [['LeavesOut', '', / \u00b7 sent, but not answered: 1$/],
  ['Refuses', '<Entry Status="Error" Order="A1" Activity="" CostLine="" CostType=""/>', /nothing waits$/]]) {
  test(`TheHeaderSaysWhatAReport_${name}`, async () => {
    const { store, answers } = component();
    const report = `<Report><File ID="1">${entry}</File></Report>`;
    const content = answers.GetMailContent;
    const host = await startHost({ ...answers, GetMailContent: (what) => (what === 'UploadReport' ? report : content()) },
      { ...SERVER, upload: report });
    const page = await open(host);
    await synchronise(page);
    await seesText(page, '#syncState', /just now/, words);
    assert.equal(store.state, 'MU');
    await page.context().close();
  });
}

test('TheTimeOfTheFirstChangeIsKeptUntilItIsSent', async () => {
  const { store, answers } = component();
  store.state = 'O';
  answers.DownloadErrors = () => { store.state = 'O'; return ''; };
  const host = await startHost(answers, SERVER);
  const page = await open(host);
  await header(page, 'Never synchronised \u00b7 nothing waits');
  assert.equal(host.journal.revision, 0);
  store.state = 'M';
  const before = Date.now();
  await page.evaluate(() => Tandril.status.update());
  await until(() => host.journal.content);
  const since = host.journal.content.waitingSince;
  assert.ok(since >= before && since <= Date.now());
  await header(page, 'Never synchronised \u00b7 changes waiting: 1');
  const counts = () => host.calls.filter((call) => call.method === 'GetMailContent').length;
  const counted = counts();
  await page.evaluate(() => Tandril.status.update());
  await until(() => counts() === counted + 2);
  await header(page, 'Never synchronised \u00b7 changes waiting: 1');
  await page.evaluate(() => new Promise((done) => { Tandril.journal.load(done); }));
  assert.equal(host.journal.content.waitingSince, since);
  await synchronise(page);
  await header(page, 'Synchronised just now \u00b7 nothing waits');
  assert.equal(host.journal.content.waitingSince, undefined);
  await page.context().close();
});

/* Two browsers do not see each other's storage; the journal stands between them, and the server knows the bytes. */
test('TwoBrowsersSendTheSameBytes', async () => {
  const { store, answers } = component();
  const received = [];
  let answer;
  const report = new Promise((resolve) => { answer = () => resolve(REPORT); });
  const host = await startHost(answers, { ...SERVER, upload: (body) => { received.push(body); return report; } });
  const first = await open(host);
  const second = await open(host);
  await first.click('#sync');
  await until(() => received.length === 1);
  await second.click('#sync');
  await until(() => received.length === 2);
  answer();
  await first.waitForSelector('[data-result]');
  await second.waitForSelector('[data-result]');
  assert.deepEqual(received, [UPLOAD, UPLOAD]);
  assert.equal(store.uploads, 1);
  assert.equal(upload(host), undefined);
  await first.context().close();
  await second.context().close();
});

test('WhatTheBrowserKeptIsBroughtOver', async () => {
  const host = await startHost(component().answers, SERVER);
  const page = await openPage(browser, host.address + 'favicon.svg');
  const old = { state: 'sent', text: UPLOAD, time: 5 };
  await page.evaluate((kept) => {
    localStorage.setItem('tandril.upload', JSON.stringify(kept));
    localStorage.setItem('tandril.lastSync', String(Date.now() - 3 * 3600000));
    localStorage.setItem('tandril.confirmed', '{"k":1}');
  }, old);
  await page.goto(host.address);
  await seesText(page, '#syncState', /no answer yet/, /3 h ago/);
  assert.deepEqual(upload(host), old);
  assert.deepEqual(host.journal.content.confirmed, { k: 1 });
  assert.deepEqual(await page.evaluate(() => Object.keys(localStorage)), []);
  await page.context().close();
});

test('WhatTheBrowserKeptStaysThereWhileTheHostCannotKeepIt', async () => {
  const host = await startHost(component().answers, SERVER);
  host.journalFault = () => true;
  const page = await openPage(browser, host.address + 'favicon.svg');
  await page.evaluate((text) => localStorage.setItem('tandril.upload', JSON.stringify({ state: 'sent', text, time: 5 })), UPLOAD);
  await page.goto(host.address);
  await seesText(page, '#syncState', /no answer yet/);
  assert.deepEqual(await page.evaluate(() => Object.keys(localStorage)), ['tandril.upload']);
  await page.context().close();
});

test('ADamagedJournalIsSaid', async () => {
  const host = await startHost(component().answers, SERVER);
  host.journal = { revision: 0, content: null, damaged: true };
  const page = await openPage(browser, host.address);
  await seesText(page, '#message.bad', /was put aside/);
  await page.context().close();
});

test('ANoteOfAnotherWindowDoesNotStopAnUpload', async () => {
  const { answers } = component();
  const host = await startHost(answers, SERVER);
  const page = await open(host);
  host.answers.CreateXMLStringForUpdate = () => {
    host.journal = { revision: host.journal.revision + 1, content: { ...host.journal.content, lastSync: 7 } };
    return UPLOAD;
  };
  assert.deepEqual(await synchronise(page), ['done', 'done', 'done', 'done']);
  await page.context().close();
});

test('AnUploadThatAnotherWindowBeganStopsThisOne', async () => {
  const { answers } = component();
  const host = await startHost(answers, SERVER);
  const page = await open(host);
  await until(() => host.journal.content); /* that something waits is written */
  host.beforeWrite = () => {
    host.beforeWrite = undefined;
    host.journal = { revision: 9, content: { upload: { state: 'sent', text: UPLOAD, time: 1 } } };
  };
  assert.equal((await synchronise(page))[0], 'failed');
  assert.match(await page.textContent('[data-step=send]'), /Another window/);
  assert.deepEqual(host.fetched, []);
  assert.equal(isCalled(host, 'CreateXMLStringForUpdate'), false);
  await page.context().close();
});

test('ASecondWindowShowsWhatTheFirstOneLeft', async () => {
  const { answers } = component();
  const host = await startHost(answers, { ...SERVER, upload: undefined });
  const first = await open(host);
  const second = await first.context().newPage();
  await second.goto(host.address);
  await seesText(second, '#syncState', /Never/);
  assert.equal((await synchronise(first))[0], 'failed');
  await second.evaluate(() => window.Tandril.status.update());
  await seesText(second, '#syncState', /no answer yet/);
  await comesTo(() => second.evaluate(() => window.Tandril.journal.isElsewhere()), false);
  host.enterprise.upload = REPORT;
  assert.deepEqual(await synchronise(second), ['done', 'done', 'done', 'done']);
  await first.click('.shade .bar button');
  await comesTo(() => first.evaluate(() => window.Tandril.journal.isElsewhere()), false);
  assert.equal((await synchronise(first))[0], 'done');
  assert.equal(host.fetched.filter((path) => path === '/enterprise/upload').length, 2);
  await first.context().close();
});
