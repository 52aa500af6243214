'use strict';

const { test } = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const acorn = require('acorn');

const PAGE = path.join(__dirname, '..', '..', 'page');
const names = fs.readdirSync(PAGE).filter((name) => name.endsWith('.js'));
const read = (name) => fs.readFileSync(path.join(PAGE, name), 'utf8');

test('EveryScriptIsPlainES5', () => {
  assert.ok(names.length > 10);
  names.forEach((name) => assert.doesNotThrow(() => acorn.parse(read(name), { ecmaVersion: 5 }), name));
});

test('NoScriptHandsTextToAParserOfMarkupOrScript', () => {
  names.forEach((name) => assert.doesNotMatch(read(name), /innerHTML|outerHTML|insertAdjacentHTML|document\.write|\beval\b|new Function|srcdoc/, name));
});

test('EveryScriptIsLoadedOnceAndNothingElseIs', () => {
  const html = read('index.html');
  assert.deepEqual([...html.matchAll(/<script src="([^"]+)"><\/script>/g)].map((match) => match[1]).sort(), [...names].sort());
  assert.doesNotMatch(html, /<script>|<style|style=| on\w+=|https?:\/\//);
});

/* The words of the page in all its languages. */
function loadTexts() {
  delete require.cache[require.resolve(path.join(PAGE, 'texts.js'))];
  require(path.join(PAGE, 'texts.js'));
  return global.Tandril.TEXTS;
}

test('EveryLanguageHasEveryText', () => {
  const texts = loadTexts();
  const places = (text) => (text.match(/\{\d\}/g) || []).sort();
  ['de', 'nl'].forEach((language) => {
    assert.deepEqual(Object.keys(texts[language]).sort(), Object.keys(texts.en).sort());
    Object.keys(texts.en).forEach((key) => assert.deepEqual(places(texts[language][key]), places(texts.en[key]), `${language} ${key}`));
  });
});

test('EveryTextThatIsAskedForExistsAndIsUsed', () => {
  const known = Object.keys(loadTexts().en);
  const sources = names.filter((name) => name !== 'texts.js').map(read).join('\n') + read('index.html');
  const asked = [...sources.matchAll(/\btext\('(\w+)'/g), ...sources.matchAll(/data-(?:text|label)="(\w+)"/g)].map((match) => match[1]);
  asked.filter((key) => key !== 'step_').forEach((key) => assert.ok(known.includes(key), key));
  known.forEach((key) => assert.ok(sources.includes(`'${key}'`) || sources.includes(`"${key}"`) || /^step_/.test(key), `${key} is not used`));
});
