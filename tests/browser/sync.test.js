'use strict';

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const { launch, openPage } = require('./support/browser');
const { startMockHost } = require('./support/mock_host');
const { eventually, seesText } = require('./support/sees');
const f = require('./support/fragments');

const UPLOAD = '<harbrook><ccsocservcordr><record ServiceOrder="A1" State="M"><F>ü</F></record></ccsocservcordr></harbrook>';
const REPORT = '<Report><File ID="1"><Entry Status="Completed" Order="A1"/><Entry Status="Error" Order="A2" Description="no"/></File></Report>';

let browser;
before(async () => { browser = await launch(); });
after(async () => { await browser.close(); });

/* A component that has one upload to give, as after a day's work. */
function component(overrides = {}) {
  let uploads = [UPLOAD];
  return {
    ListOrders: 'x', CreateXMLStringForUpdate: () => uploads.shift() || '', DownloadErrors: '', Synchronize_MasterData: 'SUCCESSFUL',
    DownloadXml: 'New Data has been downloaded.', GetVariable: (name) => (name === 'Mode' ? 'Online' : 'db'), ...overrides
  };
}

const SERVER = { upload: REPORT, orders: '<harbrook/>', masterdata: '<extract/>' };

async function withPage(answers, enterprise, act) {
  const host = await startMockHost(component(answers), enterprise);
  const page = await openPage(browser, host.address);
  try {
    await page.waitForSelector('#divList .note');
    await act(page, host);
  } finally {
    await page.context().close();
    await host.stop();
  }
}

const SYNC = ['CreateXMLStringForUpdate', 'DownloadErrors', 'DownloadXml', 'Synchronize_MasterData'];
const syncCalls = (host) => host.calls.filter((call) => SYNC.includes(call.method));
const states = (page) => page.$$eval('.steps li', (steps) => steps.map((step) => step.getAttribute('data-state')));
const journal = (host) => (host.journal.content && host.journal.content.upload) || null;

async function synchronise(page) {
  await page.click('#sync');
  await page.waitForSelector('[data-result]');
  return states(page);
}

async function close(page) {
  await page.click('.shade .bar button');
}

test('ASynchronisationSendsBeforeItFetches', () => withPage({}, SERVER, async (page, host) => {
  assert.deepEqual(await synchronise(page), ['done', 'done', 'done', 'done']);
  assert.deepEqual(syncCalls(host).map(({ method, args }) => [method, ...args]), [
    ['CreateXMLStringForUpdate'], ['DownloadErrors', REPORT], ['DownloadXml', '<harbrook/>'], ['Synchronize_MasterData', '<extract/>']
  ]);
  assert.deepEqual(host.fetched, ['/enterprise/upload', '/enterprise/orders', '/enterprise/masterdata']);
  assert.match(await page.textContent('[data-step=report]'), /1 accepted, 1 refused/);
  assert.equal(journal(host), null);
  await close(page);
  await seesText(page, '#syncState', /just now/);
}));

test('NothingToSendIsNoUpload', () => withPage({ CreateXMLStringForUpdate: '' }, SERVER, async (page, host) => {
  assert.deepEqual(await synchronise(page), ['done', 'skipped', 'done', 'done']);
  assert.deepEqual(host.fetched, ['/enterprise/orders', '/enterprise/masterdata']);
}));

test('WithoutADatabaseMasterDataIsLeftOut', () => withPage({ GetVariable: (name) => (name === 'Mode' ? 'Online' : '') }, SERVER, async (page) => {
  assert.deepEqual(await synchronise(page), ['done', 'done', 'done', 'skipped']);
}));

const LOSSES = { unreachable: undefined, dropped: 'drop', noReport: '<html>Please sign in</html>', noXml: 'OK', badGateway: { status: 504, text: 'late' } };

for (const [name, answer] of Object.entries(LOSSES)) {
  test(`TheSameBytesGoOutAgainAfter_${name}`, () => {
    const received = new Set();
    let isBroken = true;
    const upload = (body) => { received.add(body); return isBroken ? answer : REPORT; };
    return withPage({}, { ...SERVER, upload }, async (page, host) => {
      assert.equal((await synchronise(page))[0], 'failed');
      assert.deepEqual(syncCalls(host).map((call) => call.method), ['CreateXMLStringForUpdate']);
      assert.equal(journal(host).text, UPLOAD);
      await close(page);
      await seesText(page, '#syncState', /no answer yet/);
      isBroken = false;
      await page.reload();
      await page.waitForSelector('#divList .note');
      assert.deepEqual(await synchronise(page), ['done', 'done', 'done', 'done']);
      assert.deepEqual([...received], [UPLOAD]);
      assert.equal(host.calls.filter((call) => call.method === 'DownloadErrors').length, 1);
      assert.equal(journal(host), null);
    });
  });
}

test('AnAnswerThatCouldNotBeStoredIsNotAskedForAgain', () => {
  let tries = 0;
  return withPage({ DownloadErrors: () => (++tries <= 2 ? 'The upload report is damaged' : '') }, SERVER, async (page, host) => {
    assert.deepEqual(await synchronise(page), ['done', 'failed', 'waiting', 'waiting']);
    await close(page);
    assert.deepEqual(await synchronise(page), ['done', 'done', 'done', 'done']);
    assert.equal(host.fetched.filter((path) => path === '/enterprise/upload').length, 1);
  });
});

test('AFailedDownloadLeavesTheSentWorkSent', () => withPage({}, { ...SERVER, orders: 'drop' }, async (page, host) => {
  assert.deepEqual(await synchronise(page), ['done', 'done', 'failed', 'waiting']);
  assert.match(await page.textContent('[data-step=download]'), /cannot be reached/);
  assert.deepEqual(syncCalls(host).map((call) => call.method), ['CreateXMLStringForUpdate', 'DownloadErrors']);
}));

/* One record of each section, as an upload holds them; the hour registration has neither order nor activity. */
const WHOLE = '<harbrook><ccsocservcordr><record ServiceOrder="A1" State="M"><F>1</F></record></ccsocservcordr>' +
  '<ccsocservcactv><ServiceOrder ID="A1"><record Activity="10" State="N"><F>2</F></record></ServiceOrder></ccsocservcactv>' +
  '<ccsocservcmatl><ServiceOrder ID="A1" Activity="10"><record LineNumber="_1" State="N"><F>3</F></record></ServiceOrder></ccsocservcmatl>' +
  '<ccsocservclabr><ServiceOrder ID="" Activity=""><record LineNumber="_2" State="N"><F>4</F></record></ServiceOrder></ccsocservclabr>' +
  '<ccsocservcothr/><ccsocservchra/></harbrook>';
const REFUSAL = { status: 400, text: 'not a document of "orders"' };

async function meetRefusal(page) {
  await page.click('#sync');
  await page.waitForSelector('.shade .bar .danger');
  assert.equal(await page.getAttribute('[data-step=send]', 'data-state'), 'failed');
  assert.match(await page.textContent('[data-step=send]'), /status 400: not a document of "orders" The server will refuse the same upload again/);
}

test('ARefusedUploadThatIsKeptGoesOutAgain', () => {
  let answer = REFUSAL;
  return withPage({}, { ...SERVER, upload: () => answer }, async (page, host) => {
    await meetRefusal(page);
    await page.keyboard.press('Escape');
    await page.waitForSelector('[data-result=bad]');
    await close(page);
    await seesText(page, '#syncState', /one upload was refused/);
    assert.equal(journal(host).text, UPLOAD);
    answer = REPORT;
    assert.deepEqual(await synchronise(page), ['done', 'done', 'done', 'done']);
    assert.equal(host.fetched.filter((path) => path === '/enterprise/upload').length, 2);
    assert.equal(journal(host), null);
  });
});

test('ARefusedUploadCanBeSavedAndDropped', () => withPage({ CreateXMLStringForUpdate: WHOLE }, { ...SERVER, upload: REFUSAL }, async (page, host) => {
  await meetRefusal(page);
  const [copy] = await Promise.all([page.waitForEvent('download'), page.click('.shade .bar button:nth-child(2)')]);
  assert.equal(copy.suggestedFilename(), 'upload.xml');
  assert.equal(fs.readFileSync(await copy.path(), 'utf8'), WHOLE);
  await page.click('.shade .bar .danger');
  await page.click('[role=alertdialog] button:not(.danger)');
  assert.equal(journal(host).text, WHOLE);
  await page.click('.shade .bar .danger');
  await page.click('[role=alertdialog] .danger');
  await page.waitForSelector('[data-result=good]');
  assert.deepEqual(await states(page), ['done', 'done', 'done', 'done']);
  assert.match(await page.textContent('[data-step=report]'), /0 accepted, 4 refused/);
  const said = 'The enterprise server answered with status 400: not a document of &quot;orders&quot;';
  const entry = (order, activity, line, type) => `<Record Status="Error" Order="${order}" Activity="${activity}" CostLine="${line}" ` +
    `CostType="${type}" Description="${said}"></Record>`;
  const report = host.calls.find((call) => call.method === 'DownloadErrors').args[0];
  assert.equal(report.replace(/ID="page-\d+"/, 'ID="page"'), '<UploadReport><File ID="page">' + entry('A1', '', '', '') + entry('A1', '10', '', '') +
    entry('A1', '10', '_1', 'Material') + entry('', '', '_2', 'Labor') + '</File></UploadReport>');
  assert.equal(journal(host), null);
}));

for (const status of [401, 403, 404, 500]) {
  test(`AnAnswer${status}MayPassAndIsNotFinal`, () => withPage({}, { ...SERVER, upload: { status, text: 'no' } }, async (page, host) => {
    assert.equal((await synchronise(page))[0], 'failed');
    assert.equal(await page.$('.shade .bar .danger'), null);
    assert.equal(journal(host).state, 'sent');
  }));
}

test('AnUploadThatAnotherWindowSettledIsNotDropped', () => withPage({}, { ...SERVER, upload: REFUSAL }, async (page, host) => {
  await meetRefusal(page);
  host.journal = { revision: host.journal.revision + 1, content: {} };
  await page.click('.shade .bar .danger');
  await page.click('[role=alertdialog] .danger');
  await page.waitForSelector('[data-result=bad]');
  assert.equal(host.calls.some((call) => call.method === 'DownloadErrors'), false);
}));

/* The disk is full from the upload's text on; there is room for what comes before it. */
const fullForTexts = ({ content }) => Boolean(content.upload && content.upload.text);

test('WithoutRoomNothingIsSentUnasked', () => withPage({ CreateXMLStringForUpdate: WHOLE }, SERVER, async (page, host) => {
  host.journalFault = () => true;
  await page.click('#sync');
  await page.waitForSelector('.shade .bar button:nth-child(2)');
  assert.match(await page.textContent('[data-step=send]'), /no room/);
  await page.keyboard.press('Escape');
  await page.waitForSelector('[data-result=bad]');
  assert.deepEqual(syncCalls(host), []);
  assert.deepEqual(host.fetched, []);
}));

test('WithoutRoomTheEngineersWordSends', () => withPage({}, SERVER, async (page, host) => {
  host.journalFault = () => true;
  await page.click('#sync');
  await page.click('.shade .bar button:nth-child(2)');
  await page.waitForSelector('[data-result=good]');
  assert.deepEqual(host.fetched, ['/enterprise/upload', '/enterprise/orders', '/enterprise/masterdata']);
}));

test('AnUploadThatFindsNoRoomIsTakenBack', () => withPage({ CreateXMLStringForUpdate: WHOLE, updatexml: '' }, SERVER, async (page, host) => {
  host.journalFault = fullForTexts;
  await page.click('#sync');
  await page.waitForSelector('.shade .bar button:nth-child(2)');
  await page.click('.shade .bar button');
  await page.waitForSelector('[data-result=bad]');
  assert.deepEqual(host.calls.filter((call) => call.method === 'updatexml').map((call) => call.args), [[
    '<harbrook><ccsocservcordr><record ServiceOrder="A1"></record></ccsocservcordr>' +
    '<ccsocservcactv><ServiceOrder ID="A1"><record Activity="10"></record></ServiceOrder></ccsocservcactv>' +
    '<ccsocservcmatl><ServiceOrder ID="A1" Activity="10"><record LineNumber="_1"></record></ServiceOrder></ccsocservcmatl>' +
    '<ccsocservclabr><ServiceOrder ID="" Activity=""><record LineNumber="_2"></record></ServiceOrder></ccsocservclabr></harbrook>'
  ]]);
  assert.deepEqual(host.fetched, []);
}));

test('AnUnkeptUploadGoesOutAgainFromItsWindow', () => {
  const received = new Set();
  let answer = 'drop';
  return withPage({}, { ...SERVER, upload: (body) => { received.add(body); return answer; } }, async (page, host) => {
    host.journalFault = fullForTexts;
    await page.click('#sync');
    await page.click('.shade .bar button:nth-child(2)');
    await page.waitForSelector('[data-result=bad]');
    await close(page);
    await seesText(page, '#syncState', /only in this window/);
    answer = REPORT;
    assert.deepEqual(await synchronise(page), ['done', 'done', 'done', 'done']);
    assert.deepEqual([...received], [UPLOAD]);
    await close(page);
    await seesText(page, '#syncState', /^(?!.*only in this window)/);
  });
});

test('CancelStopsAtTheRunningStep', () => {
  let answer;
  const waiting = new Promise((resolve) => { answer = resolve; });
  return withPage({ DownloadErrors: () => waiting.then(() => '') }, SERVER, async (page, host) => {
    await page.click('#sync');
    await page.waitForSelector('[data-step=report][data-state=running]');
    await page.click('.shade .bar button');
    answer();
    await page.waitForSelector('[data-result=bad]');
    assert.deepEqual(await states(page), ['done', 'done', 'failed', 'waiting']);
    assert.ok(!host.fetched.includes('/enterprise/orders'));
  });
});

test('CancelIsAnsweredWhileAStepIsBroughtToItsEnd', () => {
  let answer;
  const waiting = new Promise((resolve) => { answer = resolve; });
  return withPage({ DownloadXml: () => waiting.then(() => '') }, { ...SERVER, orders: '<harbrook><a><record A="1"/><record B="2"/></a></harbrook>' }, async (page) => {
    await page.click('#sync');
    await seesText(page, '[data-step=download]', /1 KiB received, records in them: 2/);
    await page.click('.shade .bar button');
    await seesText(page, '[data-step=download]', /Cancelling/);
    answer();
    await page.waitForSelector('[data-result=bad]');
    assert.deepEqual(await states(page), ['done', 'done', 'done', 'failed']);
  });
});

test('ASilentServerIsSaid', () => withPage({}, { ...SERVER, upload: 'hang' }, async (page, host) => {
  await page.clock.install();
  await page.click('#sync');
  await seesText(page, '[data-step=send]', /1 KiB sent, records in them: 1/);
  await eventually(async () => {
    await page.clock.runFor(1000);
    assert.match(await page.textContent('[data-step=send]'), /silent for 10 s/);
  });
  await page.click('.shade .bar button');
  await page.waitForSelector('[data-result=bad]');
  assert.equal(journal(host).text, UPLOAD);
}));

test('TwoWindowsDoNotSynchroniseAtOnce', async () => {
  let answer;
  const waiting = new Promise((resolve) => { answer = resolve; });
  let list = 'Before';
  const host = await startMockHost(component({
    DownloadErrors: () => waiting.then(() => ''), MyActivities: () => f.myActivities(list, ['Order'], [{ order: 'A1', activities: [] }])
  }), SERVER);
  const first = await openPage(browser, host.address);
  const second = await first.context().newPage();
  await second.goto(host.address);
  await first.waitForSelector('#divList h2');
  await second.waitForSelector('#divList h2');
  await first.click('#sync');
  await first.waitForSelector('[data-step=report][data-state=running]');
  await seesText(second, '#syncState', /another window is synchronising/);
  assert.equal((await synchronise(second))[0], 'failed');
  await close(second);
  assert.equal((await synchronise(second))[0], 'failed');
  await seesText(second, '[data-step=send]', /Another window/);
  await close(second);
  list = 'After';
  answer();
  await first.waitForSelector('[data-result=good]');
  await second.waitForSelector('#divList h2:has-text("After")');
  await seesText(second, '#syncState', /^Synchronised just now/, /^(?!.*another window)/);
  assert.equal(syncCalls(host).filter((call) => call.method === 'CreateXMLStringForUpdate').length, 1);
  await first.context().close();
  await host.stop();
});

test('OfflineTurnsTheSynchronisationOff', () => {
  let mode = 'Online';
  return withPage({ GetVariable: () => mode, Set_Mode: (wanted) => { mode = wanted; return null; } }, SERVER, async (page) => {
    await page.waitForSelector('#mode[data-mode=Online]');
    await page.click('#mode');
    await page.waitForSelector('#mode[data-mode=Offline]');
    assert.equal(await page.isDisabled('#sync'), true);
    await page.click('#mode');
    await page.waitForSelector('#mode[data-mode=Online]');
    assert.equal(await page.isDisabled('#sync'), false);
  });
});
