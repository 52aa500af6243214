'use strict';

/* Every view and window in German and Dutch, with the sample field mapper of the language: no English word, no code. */

const { test } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { openPage } = require('./support/browser');
const { useBrowser } = require('./support/mock_page');
const { startSystem, ROOT } = require('./support/system');
const { STOPS, isAlike } = require('./support/tour');

require(path.join(ROOT, 'page', 'texts.js'));
const { TEXTS } = global.Tandril;

const browser = useBrowser();

const DRAFT = { de: /\d\d\.\d\d\.\d{4}, \d\d:\d\d/, nl: /\d{1,2} \w+\.? \d{4}/ };

/* The words of a field mapper by what they stand for: labels, values of a list, messages. */
function mapperWords(language) {
  const xml = fs.readFileSync(path.join(ROOT, 'samples', `fieldmapper-${language}.xml`), 'utf8');
  return [...xml.matchAll(/ (?:LABEL|Value|DESCRIPTION)="([^"]*)"/g)].map((match) => match[1]);
}

/* What is said in English in the page or in the field mapper, and otherwise in the language, as whole texts. */
function englishOnly(language) {
  const ours = [...Object.values(TEXTS.en), ...mapperWords('en')].filter((words) => /[a-z]{3}/i.test(words.replace(/\{\d\}/g, '')));
  const theirs = new Set([...Object.values(TEXTS[language]), ...mapperWords(language)]);
  const escaped = (words) => words.replace(/[.*+?^$()|[\]\\]/g, '\\$&').replace(/\{\d\}/g, '.*');
  return ours.filter((words) => !theirs.has(words)).map((words) => new RegExp(`^${escaped(words)}$`));
}

/* Every text that is shown or read out, but for what the records hold. */
const wordsOf = (page) => page.evaluate(() => {
  const found = new Set();
  const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) {
    const { parentElement: parent, data } = walker.currentNode;
    if (parent.checkVisibility({ visibilityProperty: true }) && !parent.closest('script, noscript, .rows tbody, .value, dd')) { found.add(data.trim()); }
  }
  document.querySelectorAll('[aria-label], [title], [placeholder]').forEach((element) => ['aria-label', 'title', 'placeholder'].forEach((name) => {
    if (!element.closest('.rows tbody')) { found.add((element.getAttribute(name) || '').trim()); }
  }));
  return [...found].filter(Boolean);
});

for (const language of ['de', 'nl']) {
  test(`NoWordIsLeftUntranslated ${language}`, async () => {
    const system = await startSystem({ filled: true, masterData: 'chosen', language });
    const page = await openPage(browser(), system.address, { locale: language + '-' + language.toUpperCase() });
    const english = englishOnly(language);
    const left = {};
    let count = 0;
    try {
      for (const [name, open] of STOPS.filter(([stop]) => !isAlike(stop))) {
        await open(page);
        const words = await wordsOf(page);
        const bad = words.filter((text) => /SL[A-Z]{3}\d{4}/.test(text) || english.some((pattern) => pattern.test(text)));
        if (bad.length) { left[name] = bad; }
        count += words.length;
        if (name === 'draft') { assert.match(await page.textContent('.draft span'), DRAFT[language]); }
      }
      assert.deepEqual(left, {});
      assert.ok(count > 500, String(count));
      assert.equal(await page.getAttribute('html', 'lang'), language);
      assert.deepEqual(page.problems, []);
    } finally {
      await page.context().close();
      await system.stop();
    }
  });
}
