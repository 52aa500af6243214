'use strict';

const { test, before, after } = require('node:test');
const assert = require('node:assert/strict');
const { launch, openPage } = require('./support/browser');
const { startMockHost } = require('./support/mock_host');
const f = require('./support/fragments');
const hostile = require('./support/hostile');

/* What a fragment may bring into the document. */
const ELEMENTS = new Set(('DIV H2 P SPAN BUTTON INPUT TEXTAREA SELECT OPTION LABEL SMALL TABLE COLGROUP COL THEAD TBODY TR TH TD DL DT DD ' +
  'svg path').split(' '));
const ATTRIBUTES = new Set(('class id for type role tabindex title hidden disabled size rows cols autocomplete placeholder scope colspan style name value ' +
  'aria-label aria-sort aria-rowcount aria-rowindex aria-current aria-hidden aria-keyshortcuts aria-labelledby aria-describedby aria-invalid data-field data-name data-form ' +
  'data-index viewBox focusable d').split(' '));

const one = (order, number, cells) => f.myActivities('Title', ['L1', 'L2', 'L3'], [{ order, activities: [{ number, cells }] }]);
const form = (...rows) => f.activityDetails('Title', 'A1', '10', rows);

/* Every place of a fragment that takes a value, a label or a key: the fragment around a value, and where it shows. */
const PLACES = {
  listCell: { make: (v) => one('A1', '10', [f.cell(v), f.cell('next')]), text: '.tablerows td:nth-child(3)' },
  listLink: { make: (v) => one('A1', '10', [f.link('CCFG', v, 'order'), f.cell('next')]), text: '.tablerows td:nth-child(3)' },
  orderKey: { make: (v) => one(v, '10', [f.cell('next')]), text: '.orderrow td' },
  activityKey: { make: (v) => one('A1', v, [f.cell('next')]), text: '.tablerows td:nth-child(2)' },
  listTitle: { make: (v) => f.listOrders(v, ['L1'], [{ order: 'A1', cells: [] }]), text: 'h2' },
  heading: { make: (v) => f.listOrders('Title', [v, 'L2'], [{ order: 'A1', cells: [f.cell('x')] }]), text: 'th:first-child' },
  input: { make: (v) => form(f.fieldRow('Label', f.input('F', v)), f.fieldRow('Next', f.input('G', 'next'))), value: '[data-field=F]' },
  zoomInput: { make: (v) => form(f.fieldRow('Label', f.zoomInput('F', v, 'activity_A1_10')), f.fieldRow('Next', f.input('G', 'next'))), value: '[data-field=F]' },
  hiddenInput: { make: (v) => form(f.hidden('F', v), f.fieldRow('Next', f.input('G', 'next'))), value: '[data-field=F]' },
  area: { make: (v) => form(f.fieldRow('Label', f.area('F', v)), f.fieldRow('Next', f.input('G', 'next'))), value: '[data-field=F]' },
  fixed: { make: (v) => form(f.fieldRow('Label', f.fixed('F', v)), f.fieldRow('Next', f.input('G', 'next'))), text: '[data-name=F]' },
  formLink: { make: (v) => form(f.fieldRow('Label', f.plainLink('F', v)), f.fieldRow('Next', f.input('G', 'next'))), text: '.field:nth-child(1) .control' },
  label: { make: (v) => form(f.fieldRow(v, f.input('F', 'x')), f.fieldRow('Next', f.input('G', 'next'))), text: 'label[for=F]' },
  date: { make: (v) => form(f.fieldRow('Label', f.dateInput('F', v, '1030')), f.fieldRow('Next', f.input('G', 'next'))), value: '[data-field=F]' },
  option: { make: (v) => form(f.fieldRow('Label', f.select('F', [['15', v, true], ['20', 'Done']])), f.fieldRow('Next', f.input('G', 'next'))), text: 'option:first-child' },
  formTitle: { make: (v) => f.activityDetails(v, 'A1', '10', [f.fieldRow('Label', f.input('F', 'x'))]), text: 'h2' },
  formKey: { make: (v) => f.activityDetails('Title', v, '10', [f.fieldRow('Label', f.input('F', 'x'))]) },
  button: { make: (v) => f.activityDetails('Title', 'A1', '10', [f.fieldRow('Label', f.input('F', 'x'))], v), text: '#btnSave' },
  zoomKey: { make: (v) => f.zoomWindow('Title', 'CROB', ['Code', 'Text'], [[v, 'text'], ['next', 'x']]), text: 'tbody tr:first-child td:first-child' },
  zoomText: { make: (v) => f.zoomWindow('Title', 'CROB', ['Code', 'Text'], [['code', v], ['next', 'x']]), text: 'tbody tr:first-child td:nth-child(2)' },
  errorPool: { make: (v) => f.errorPool(v, 3) }
};

let browser;
let host;
let page;
const asked = [];

before(async () => {
  browser = await launch();
  host = await startMockHost({ ListOrders: 'x' });
  page = await openPage(browser, host.address);
  await page.waitForSelector('#divList .note');
  /* The clock stands still, so that every fragment is read to its end at once. */
  await page.evaluate(() => {
    const now = Date.now();
    Date.now = () => now;
  });
  page.on('request', (request) => asked.push(request.url()));
  page.on('dialog', (dialog) => { asked.push('dialog'); dialog.dismiss(); });
});
after(async () => {
  await browser.close();
  await host.stop();
});

/** Renders every fragment of [value, fragment] and tells what it brought in and what stands where the value belongs. */
function renderAll(cases, text, value) {
  return page.evaluate(([all, textAt, valueAt]) => all.map(([, fragment]) => {
    const place = document.getElementById('divList');
    window.Tandril.render(place, fragment, { run: () => {}, state: {}, title: '' });
    const elements = Array.from(place.querySelectorAll('*'));
    const found = place.querySelector(textAt || valueAt || 'none');
    return {
      elements: [...new Set(elements.map((element) => element.nodeName))],
      attributes: [...new Set(elements.flatMap((element) => Array.from(element.attributes, (attribute) => attribute.name)))],
      shown: found && (textAt ? found.textContent : found.value)
    };
  }), [cases, text, value]);
}

/* What a text field and a cell make of white space, the component's own blanks included, is no matter here. */
const normal = (text) => String(text).replace(/&nbsp;?/g, ' ').replace(/[\s\u00a0\ufeff]+/g, ' ').trim();

test('ThereAreAtLeastAHundredHostileValues', () => {
  assert.ok(new Set(hostile.all).size >= 100, String(new Set(hostile.all).size));
  assert.equal(new Set(hostile.all).size, hostile.all.length);
});

for (const [name, { make, text, value }] of Object.entries(PLACES)) {
  test(`NothingForeignComesInThrough_${name}`, async () => {
    const results = await renderAll(hostile.all.map((v) => [v, make(v)]), text, value);
    results.forEach(({ elements, attributes }, index) => {
      elements.forEach((element) => assert.ok(ELEMENTS.has(element), `${element} from ${hostile.all[index]}`));
      attributes.forEach((attribute) => assert.ok(ATTRIBUTES.has(attribute), `${attribute} from ${hostile.all[index]}`));
    });
  });

  if (text || value) {
    test(`ForeignMarkupShowsAsTextIn_${name}`, async () => {
      const values = hostile.foreign.filter((v) => v.trim() !== '');
      const results = await renderAll(values.map((v) => [v, make(v)]), text, value);
      results.forEach(({ shown }, index) => {
        const expected = value && name !== 'area' ? values[index].replace(/[\r\n]/g, '') : values[index];
        assert.equal(normal(shown), normal(expected), JSON.stringify(values[index]));
      });
    });
  }
}

test('NothingRanAndNothingLeftThePage', async () => {
  await page.waitForLoadState('networkidle');
  assert.equal(await page.evaluate(() => window.caught), undefined);
  assert.deepEqual(page.problems, []);
  assert.deepEqual(asked.filter((address) => !address.startsWith(host.address)), []);
});

test('AHostileRecordDoesNotHideTheOthers', async () => {
  for (const v of hostile.all) {
    const shown = await page.evaluate((fragment) => {
      const place = document.getElementById('divList');
      window.Tandril.render(place, fragment, { run: () => {}, state: {}, title: '' });
      return Array.from(place.querySelectorAll('tr.orderrow'), (row) => row.textContent.trim());
    }, f.myActivities('Title', ['L1', 'L2'], [
      { order: 'A1', activities: [{ number: '10', cells: [f.cell(v)] }] }, { order: 'A2', activities: [{ number: '10', cells: [f.cell('x')] }] }
    ]));
    assert.deepEqual(shown, ['A1', 'A2'], JSON.stringify(v));
  }
});
