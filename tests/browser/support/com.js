'use strict';

/*
 * What the page has in a COM script host: its files, an ActiveXObject whose methods answer at once, the enterprise server
 * at an address of its own, and none of the web host's other answers. Behind the object and the address are the real
 * component and the sample enterprise server.
 */

const http = require('node:http');
const { PATIENCE } = require('./browser');
const { startSystem } = require('./system');

const META = '<meta name="tandril-enterprise" content="';

function request(base, method, path, headers, body) {
  return new Promise((resolve, reject) => {
    const outgoing = http.request(new URL(path, base), { method, headers }, (response) => {
      const chunks = [];
      response.on('data', (chunk) => chunks.push(chunk));
      response.on('end', () => resolve({ status: response.statusCode, headers: response.headers, body: Buffer.concat(chunks) }));
    });
    outgoing.on('error', reject);
    outgoing.end(body);
  });
}

/** The headers that the web host wants from its own page. */
async function enter(address) {
  const { origin } = new URL(address);
  const launched = await request(origin, 'GET', address, {});
  const headers = { Cookie: launched.headers['set-cookie'][0].split(';')[0], Origin: origin };
  const session = await request(origin, 'GET', '/session', headers);
  return { ...headers, 'X-Tandril-Csrf': JSON.parse(session.body).csrf };
}

/* Runs in the page. */
function standIn() {
  window.ActiveXObject = function ActiveXObject(program) {
    if (program !== 'Tandril.Client20') { throw new Error('no such program'); }
    return new Proxy({}, {
      get: (client, method) => (...args) => {
        const call = new XMLHttpRequest();
        call.open('POST', '/com/' + method, false);
        call.send(JSON.stringify(args));
        const answer = JSON.parse(call.responseText);
        if (answer.fault) { throw new Error(answer.fault); }
        return answer.result === null ? undefined : answer.result;
      }
    });
  };
}

/**
 * { address, home, calls, uploads, strangers, faults, open(context), stop() }: calls are the methods that were called,
 * uploads the texts that came to the enterprise server, strangers the addresses that no script host answers;
 * faults[PATH](response) answers in the enterprise server's place.
 */
async function startCom(options) {
  const system = await startSystem(options);
  const headers = await enter(system.address);
  const it = { home: system.home, calls: [], uploads: [], strangers: [], faults: {} };

  async function forward(method, path, type, body, response) {
    const answer = await request(headers.Origin, method, path, { ...headers, 'Content-Type': type, 'Content-Length': body.length }, body);
    response.writeHead(answer.status, { 'Content-Type': answer.headers['content-type'] || 'text/plain' });
    response.end(answer.body);
  }

  function answerOffice(method, path, body, response) {
    if (path === 'upload') { it.uploads.push(body.toString('utf8')); }
    if (it.faults[path]) { return it.faults[path](response); }
    return forward(method, '/enterprise/' + path, 'text/xml; charset=utf-8', body, response);
  }

  async function servePage(path, response) {
    const file = await request(headers.Origin, 'GET', path, headers);
    response.writeHead(file.status, { 'Content-Type': file.headers['content-type'] });
    response.end(path === '/' ? file.body.toString('utf8').replace(META, META + '/office/') : file.body);
  }

  function answer({ method, url }, body, response) {
    const [, place, path] = /^\/(com|office)\/(.*)$/.exec(url) || [];
    if (place === 'office') { return answerOffice(method, path, body, response); }
    if (place === 'com') {
      it.calls.push(path);
      return forward('POST', '/client20/' + path, 'application/json', body, response);
    }
    if (url === '/' || /^\/[\w.-]+\.\w+$/.test(url)) { return servePage(url, response); }
    it.strangers.push(url);
    return response.writeHead(404).end();
  }

  const server = http.createServer((incoming, response) => {
    const chunks = [];
    incoming.on('data', (chunk) => chunks.push(chunk));
    incoming.on('end', () => answer(incoming, Buffer.concat(chunks), response));
  });
  await new Promise((resolve) => { server.listen(0, '127.0.0.1', resolve); });
  it.address = `http://127.0.0.1:${server.address().port}/`;
  it.open = async (context) => {
    context.setDefaultTimeout(PATIENCE);
    const page = await context.newPage();
    await page.addInitScript(standIn);
    await page.goto(it.address);
    await page.waitForSelector('#divList tr.tablerows');
    return page;
  };
  it.stop = () => {
    server.closeAllConnections();
    server.close();
    return system.stop();
  };
  return it;
}

module.exports = { startCom };
