/*
 * Takes the page's calls to the component: through the web host that served the page, or straight to the COM object
 * where the browser can make one. Everything above this file is the same code in both cases.
 *
 * Calls are made one at a time in the order in which they were asked for, because some methods rely on what the call
 * before them has loaded. An answer is one of
 *   { ok: true, result: VALUE, out: {...} }
 *   { ok: false, kind: "fault" | "invalid" | "refused" | "lost", text: "..." }
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  var PROGRAM = 'Tandril.Client20';
  var ABOUT_LAST = 'Get_Error'; /* tells of the call before it, so no other comes between them */
  var client = null;
  var token = '';
  var waiting = [];
  var running = true; /* as long as the way to the component is looked for, too */

  function makeClient() {
    try {
      return typeof root.ActiveXObject === 'undefined' ? null : new root.ActiveXObject(PROGRAM);
    } catch (unavailable) {
      return null;
    }
  }

  /** Sends one request; done({status, text}), with status 0 when there was no answer. */
  function send(verb, address, type, body, done, progress) {
    var request = new XMLHttpRequest();
    request.open(verb, address, true);
    if (progress) { watch(request, progress); }
    if (type) { request.setRequestHeader('Content-Type', type); }
    if (verb === 'POST' && token) { request.setRequestHeader('X-Tandril-Csrf', token); }
    request.onreadystatechange = function () {
      if (request.readyState === 4) { done({ status: request.status, text: request.responseText || '' }); }
    };
    request.send(body);
    return request;
  }

  function watch(request, progress) {
    function report(isUp) {
      return function (event) { progress(event.loaded, event.lengthComputable ? event.total : 0, isUp); };
    }
    request.onprogress = report(false);
    if (request.upload) { request.upload.onprogress = report(true); }
  }

  /** Where the enterprise server is: behind the host, or, without a host, where the page's file says. */
  function enterpriseAddress(path) {
    var meta = document.querySelector('meta[name="tandril-enterprise"]');
    return (client ? meta && meta.content || '' : '/enterprise/') + path;
  }

  function parse(text) {
    try {
      return JSON.parse(text);
    } catch (notJson) {
      return null;
    }
  }

  function readAnswer(reply) {
    if (reply.status === 0) { return { ok: false, kind: 'lost', text: '' }; }
    var body = parse(reply.text);
    if (reply.status === 200 && body && body.hasOwnProperty('result')) {
      return { ok: true, result: body.result, out: body.out || {} };
    }
    if (body && body.fault) { return { ok: false, kind: 'fault', text: body.fault }; }
    if (body && body.invalid) { return { ok: false, kind: 'invalid', text: body.invalid }; }
    return { ok: false, kind: 'refused', text: reply.text || String(reply.status) };
  }

  /* The object's methods cannot be called with a list of arguments, so each count has its line. */
  function invoke(method, a) {
    switch (a.length) {
      case 0: return client[method]();
      case 1: return client[method](a[0]);
      case 2: return client[method](a[0], a[1]);
      case 3: return client[method](a[0], a[1], a[2]);
      case 4: return client[method](a[0], a[1], a[2], a[3]);
      case 5: return client[method](a[0], a[1], a[2], a[3], a[4]);
      default: return client[method](a[0], a[1], a[2], a[3], a[4], a[5]);
    }
  }

  function callObject(method, args, done) {
    var answer;
    try {
      var result = invoke(method, args);
      answer = { ok: true, result: result === undefined ? null : result, out: {} };
    } catch (fault) {
      answer = { ok: false, kind: 'fault', text: fault.message || fault.description || String(fault) };
    }
    done(answer);
  }

  function callHost(method, args, done) {
    send('POST', '/client20/' + method, 'application/json', JSON.stringify(args), function (reply) {
      done(readAnswer(reply));
    });
  }

  function next() {
    var job = waiting.shift();
    running = Boolean(job);
    if (!job) { return; }
    (client ? callObject : callHost)(job.method, job.args, function (answer) {
      job.done(answer);
      root.setTimeout(next, 0);
    });
  }

  /** The way is found. What somebody has asked for meanwhile comes after what `done` asks for. */
  function begin(done) {
    var early = waiting.splice(0);
    done({ ok: true, result: null, out: {} });
    waiting = waiting.concat(early);
    next();
  }

  /* ---- the journal ---- */

  /* Without the host the browser's storage stands for its file, with the same answers. */
  var KEPT = 'tandril.journal';

  function readStored() {
    try {
      return JSON.parse(root.localStorage.getItem(KEPT)) || { revision: 0, content: null };
    } catch (unavailable) {
      return { revision: 0, content: null };
    }
  }

  function writeStored(entry) {
    var stored = readStored();
    if (stored.revision !== entry.revision) { return { status: 409, text: JSON.stringify(stored) }; }
    try {
      root.localStorage.setItem(KEPT, JSON.stringify({ revision: entry.revision + 1, content: entry.content }));
    } catch (refused) {
      return { status: 500, text: '' };
    }
    return { status: 200, text: JSON.stringify({ revision: entry.revision + 1 }) };
  }

  /** done({ok, changed, entry}): `changed` when another window has written; entry is what the answer holds. */
  function readJournal(reply, done) {
    done({ ok: reply.status === 200, changed: reply.status === 409, entry: parse(reply.text) || {} });
  }

  Tandril.transport = {
    /** Finds the way to the component; done(answer) like a call. Comes before the first call. */
    open: function (done) {
      client = makeClient();
      if (client) {
        begin(done);
        return;
      }
      send('GET', '/session', '', null, function (reply) {
        var session = reply.status === 200 && parse(reply.text);
        token = session && session.csrf || '';
        if (token) { begin(done); } else { done(readAnswer(reply)); }
      });
    },

    /** Makes one call; `args` holds all arguments in order. */
    call: function (method, args, done) {
      var job = { method: method, args: args, done: done };
      if (method === ABOUT_LAST) { waiting.unshift(job); } else { waiting.push(job); }
      if (!running) { next(); }
    },

    /**
     * Asks the enterprise server; done({ok, status, text}), with status 0 when there was no answer;
     * progress(loaded, total, isUp) as bytes go up and come down. Returns the request, which can be aborted.
     */
    enterprise: function (verb, path, body, done, progress) {
      var type = body === null ? '' : 'text/xml; charset=utf-8';
      return send(verb, enterpriseAddress(path), type, body, function (reply) {
        done({ ok: reply.status === 200, status: reply.status, text: reply.text });
      }, progress);
    },

    /** The journal as it is kept: entry is {revision, content, damaged}. */
    readJournal: function (done) {
      if (client) {
        readJournal({ status: 200, text: JSON.stringify(readStored()) }, done);
        return;
      }
      send('GET', '/journal', '', null, function (reply) { readJournal(reply, done); });
    },

    /** Makes `content` the journal's if it still has the revision that was read; entry is {revision} then. */
    writeJournal: function (revision, content, done) {
      if (client) {
        readJournal(writeStored({ revision: revision, content: content }), done);
        return;
      }
      send('POST', '/journal', 'application/json', JSON.stringify({ revision: revision, content: content }), function (reply) {
        readJournal(reply, done);
      });
    },

    /** What the component has shown on its own screen after message `number`: done([{number, title, text}]). */
    messages: function (number, done) {
      if (client) {
        done([]);
        return;
      }
      send('GET', '/messages?after=' + number, '', null, function (reply) {
        done(reply.status === 200 && parse(reply.text) || []);
      });
    },

    /** Whether the component is used directly, without the web host. */
    isDirect: function () {
      return client !== null;
    }
  };
}(window));
