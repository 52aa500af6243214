'use strict';

/*
 * A host for tests that need answers no component would give. It serves the page under the host's rules for content and
 * answers each call with what the test says: answers[METHOD] is the result or a function of the arguments.
 */

const http = require('node:http');
const fs = require('node:fs');
const path = require('node:path');

const PAGE = path.join(__dirname, '..', '..', '..', 'page');
const TYPES = { '.html': 'text/html', '.js': 'text/javascript', '.css': 'text/css', '.svg': 'image/svg+xml' };
const POLICY = "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self'; " +
  "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";
const TOKEN = 'csrf-of-this-test';

function send(response, status, type, body) {
  response.writeHead(status, {
    'Content-Type': type + '; charset=utf-8', 'Content-Security-Policy': POLICY, 'X-Content-Type-Options': 'nosniff',
    'Cache-Control': 'no-store'
  });
  response.end(body);
}

function serveFile(name, response) {
  const file = path.join(PAGE, name === '/' ? 'index.html' : name);
  if (!file.startsWith(PAGE + path.sep) || !fs.existsSync(file)) { return send(response, 404, 'text/plain', 'not found'); }
  return send(response, 200, TYPES[path.extname(file)], fs.readFileSync(file));
}

async function answerCall(host, method, body, response) {
  const args = JSON.parse(body);
  host.calls.push({ method, args });
  const answer = host.answers[method];
  if (answer === undefined) { return send(response, 200, 'application/json', JSON.stringify({ result: '' })); }
  const result = typeof answer === 'function' ? await answer(...args) : answer;
  return send(response, result && result.fault ? 500 : 200, 'application/json',
    JSON.stringify(result && result.fault ? result : { result }));
}

/* As the web host keeps it; host.journalFault stands for a disk that is full. */
async function answerJournal(host, request, body, response) {
  if (request.method === 'GET') { return send(response, 200, 'application/json', JSON.stringify(host.journal)); }
  if (host.journalFault && host.journalFault(JSON.parse(body))) {
    return send(response, 500, 'application/json', '{"fault":"the disk is full"}');
  }
  if (host.beforeWrite) { await host.beforeWrite(); }
  const { revision, content } = JSON.parse(body);
  if (revision !== host.journal.revision) { return send(response, 409, 'application/json', JSON.stringify(host.journal)); }
  host.journal = { revision: revision + 1, content };
  if (host.onKept) { host.onKept(content); }
  if (host.hangAfter && content.upload && content.upload.state === host.hangAfter) { return undefined; }
  return send(response, 200, 'application/json', JSON.stringify({ revision: revision + 1 }));
}

/* An answer of the enterprise server: a text, { status, text }, a function of the body that gives one, "drop" or "hang". */
async function answerEnterprise(answer, body, request, response) {
  const reply = await (typeof answer === 'function' ? answer(body) : answer);
  if (reply === 'drop') { return request.socket.destroy(); }
  if (reply === 'hang') { return undefined; }
  if (reply === undefined) { return send(response, 502, 'text/plain', 'unreachable'); }
  return typeof reply === 'string' ? send(response, 200, 'text/xml', reply) : send(response, reply.status, 'text/plain', reply.text);
}

async function handle(host, request, body, response) {
  const { pathname } = new URL(request.url, 'http://127.0.0.1');
  if (pathname === '/session') {
    await host.entrance;
    return send(response, 200, 'application/json', JSON.stringify({ csrf: TOKEN }));
  }
  if (pathname === '/journal') { return answerJournal(host, request, body, response); }
  if (pathname === '/messages') { return send(response, 200, 'application/json', JSON.stringify(host.messages)); }
  if (pathname.startsWith('/client20/')) {
    if (request.headers['x-tandril-csrf'] !== TOKEN) { return send(response, 403, 'text/plain', 'no token'); }
    return answerCall(host, pathname.slice('/client20/'.length), body, response);
  }
  if (pathname.startsWith('/enterprise/')) {
    host.fetched.push(pathname);
    return answerEnterprise(host.enterprise[pathname.slice('/enterprise/'.length)], body, request, response);
  }
  return serveFile(pathname, response);
}

/**
 * Starts a host; { address, calls, fetched, answers, enterprise, journal, messages, stop() }; enterprise[PATH] is an answer,
 * see above. For the journal: beforeWrite(), onKept(content), hangAfter = a state of the upload. The session is given once
 * `entrance` is settled.
 */
async function startMockHost(answers = {}, enterprise = {}) {
  const host = {
    calls: [], fetched: [], answers: { GetVariable: 'Online', FMapperXMLExists: true, Get_Error: '1', ...answers }, enterprise,
    journal: { revision: 0, content: null }, messages: []
  };
  const server = http.createServer((request, response) => {
    const chunks = [];
    request.on('data', (chunk) => chunks.push(chunk));
    request.on('end', () => handle(host, request, Buffer.concat(chunks).toString('utf8'), response));
  });
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  server.unref(); /* a test that fails before it stops its host must not hold up the others */
  host.address = `http://127.0.0.1:${server.address().port}/`;
  host.stop = () => new Promise((resolve) => { server.closeAllConnections(); server.close(resolve); });
  return host;
}

module.exports = { startMockHost };
