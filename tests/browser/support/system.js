'use strict';

/* The real thing: the sample enterprise server and the web host over a fresh home, as an engineer starts them. */

const { execFileSync, spawn } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { PATIENCE } = require('./browser');

const ROOT = path.join(__dirname, '..', '..', '..');
const PROGRAMS = process.env.TANDRIL_PROGRAMS || path.join(ROOT, 'build', 'release', 'bin');

/** Starts a program and waits for the URL that it prints. */
function start(name, args) {
  const child = spawn(path.join(PROGRAMS, name), args, { stdio: ['ignore', 'pipe', 'pipe'] });
  let output = '';
  let errors = '';
  child.stderr.on('data', (text) => { errors += text; });
  const stopped = new Promise((resolve) => child.on('close', resolve));
  const url = new Promise((resolve, reject) => {
    const timer = setTimeout(() => reject(new Error(`${name} printed no URL: ${output}${errors}`)), 3 * PATIENCE).unref();
    child.on('error', reject);
    child.on('close', (code) => reject(new Error(`${name} ended with ${code}: ${errors}`)));
    child.stdout.on('data', (text) => {
      output += text;
      const match = /http:\/\/\S+/.exec(output);
      if (match) { clearTimeout(timer); resolve(match[0]); }
    });
  });
  return url.then((address) => ({
    address,
    log: () => errors,
    stop: () => { child.kill('SIGTERM'); return stopped; },
    kill: () => { child.kill('SIGKILL'); return stopped; }
  }));
}

function startEnterprise(folder, language = 'en') {
  return start('tandril-enterprise', ['--port', '0', '--samples', path.join(ROOT, 'samples'), '--data', path.join(folder, 'office'),
    '--language', language]);
}

function startHost(home, enterprise) {
  return start('tandril', ['serve', '--home', home, '--port', '0', '--page', path.join(ROOT, 'page'), '--enterprise', enterprise]);
}

/** A home with the field mapper and the orders of the samples in it, as after a first download. */
function fillHome(home, { orders = fs.readFileSync(path.join(ROOT, 'samples', 'orders.xml')), language = 'en' } = {}) {
  const folder = path.join(home, 'Vorn Tandril');
  fs.mkdirSync(path.join(folder, 'MasterData'), { recursive: true });
  fs.copyFileSync(path.join(ROOT, 'samples', `fieldmapper-${language}.xml`), path.join(folder, 'FieldMapper.xml'));
  fs.writeFileSync(path.join(folder, 'Harbrook.xml'), orders);
}

/** The master data of the samples, which the page has yet to choose unless they are `chosen`. */
function addMasterData(home, chosen) {
  fs.copyFileSync(path.join(ROOT, 'samples', 'masterdata', 'tandril.mdb'), path.join(home, 'Vorn Tandril', 'MasterData', 'tandril.mdb'));
  if (chosen) { execFileSync(path.join(PROGRAMS, 'tandril'), ['masterdata', '--home', home, 'use', 'tandril']); }
}

/**
 * { address, home, host, enterprise, stop() }; options.filled puts the sample data into the home first, with other orders
 * (options.orders) or in another language (options.language), options.masterData their database, too, which the settings
 * name if it is 'chosen'.
 */
async function startSystem(options = {}) {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'tandril-page-'));
  const home = path.join(folder, 'home');
  fs.mkdirSync(home);
  if (options.filled) { fillHome(home, options); }
  if (options.masterData) { addMasterData(home, options.masterData === 'chosen'); }
  const enterprise = await startEnterprise(folder, options.language);
  const host = await startHost(home, enterprise.address);
  return {
    address: host.address, home, host, enterprise,
    stop: async () => {
      await host.stop();
      await enterprise.stop();
      fs.rmSync(folder, { recursive: true, force: true });
    }
  };
}

module.exports = { startSystem, startHost, fillHome, addMasterData, ROOT };
