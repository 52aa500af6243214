/* The XML of one record, as the component takes it: its section, its group, its keys and its fields. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  var SECTIONS = {
    order: 'ccsocservcordr', activity: 'ccsocservcactv', material: 'ccsocservcmatl', labor: 'ccsocservclabr',
    other: 'ccsocservcothr', hra: 'ccsocservclabr'
  };

  /* The store finds a record's status as its first field. */
  var STATUS_FIELDS = { order: 'OrderStatus', activity: 'ActivityStatus' };

  var ILLEGAL = /[\u0000-\u0008\u000b\u000c\u000e-\u001f\ufffe\uffff]/g;
  var LONE_SURROGATE = /[\ud800-\udbff](?![\udc00-\udfff])|(^|[^\ud800-\udbff])[\udc00-\udfff]/g;

  function escape(text) {
    return String(text).replace(ILLEGAL, '').replace(LONE_SURROGATE, '$1').replace(/&/g, '&amp;').replace(/</g, '&lt;')
      .replace(/>/g, '&gt;').replace(/"/g, '&quot;').replace(/\r\n?/g, '\n');
  }

  function element(name, attributes, content) {
    var text = '<' + name;
    Object.keys(attributes).forEach(function (key) { text += ' ' + key + '="' + escape(attributes[key]) + '"'; });
    return text + '>' + content + '</' + name + '>';
  }

  function withStatusFirst(kind, fields) {
    var status = STATUS_FIELDS[kind];
    if (!status) { return fields; }
    var found = fields.filter(function (field) { return field.name === status; });
    var others = fields.filter(function (field) { return field.name !== status; });
    return (found.length ? found : [{ name: status, value: '15' }]).concat(others);
  }

  function childrenOf(element) {
    return Array.prototype.filter.call(element.childNodes, function (node) { return node.nodeType === 1; });
  }

  /* The word that an upload report has for a section of cost lines. */
  var COST_TYPES = { ccsocservcmatl: 'Material', ccsocservclabr: 'Labor', ccsocservcothr: 'Other' };

  function keyOf(order, activity, line, costType) {
    return [order, activity, line, costType].map(function (part) { return part || ''; }).join('\n');
  }

  /** A number for the fields of a record, to see whether they are still what they were. */
  function digest(record) {
    var text = childrenOf(record).map(function (field) { return field.nodeName + '\n' + field.textContent; }).join('\n');
    var number = 5381;
    for (var i = 0; i < text.length; i++) { number = (number * 33 + text.charCodeAt(i)) % 4294967291; }
    return number;
  }

  /* Hour registrations go along with every upload, and every group at least as an empty element. */
  var REGISTRATIONS = 'ccsocservchra';
  var GROUP_SIZE = 100;

  function sizeOf(node) {
    return node ? new root.XMLSerializer().serializeToString(node).length : 0;
  }

  function describe(section, group, record) {
    var isOrder = section.nodeName === SECTIONS.order;
    return {
      section: section.nodeName,
      key: isOrder ? keyOf(record.getAttribute('ServiceOrder')) : keyOf(group.getAttribute('ID'),
        record.getAttribute('Activity') || group.getAttribute('Activity'), record.getAttribute('LineNumber'), COST_TYPES[section.nodeName]),
      element: record
    };
  }

  var CHANGED = ['N', 'M'];
  var SENT = ['NU', 'MU'];

  /** The records of a document in one of these states; orders stand in their section, everything else in groups below theirs. */
  function recordsIn(xml, states) {
    var found = [];
    function take(section, group, record) {
      if (states.indexOf(record.getAttribute('State')) >= 0) { found.push(describe(section, group, record)); }
    }
    childrenOf(parse(xml).documentElement).forEach(function (section) {
      childrenOf(section).forEach(function (child) {
        if (section.nodeName === SECTIONS.order) {
          take(section, null, child);
        } else {
          childrenOf(child).forEach(function (record) { take(section, child, record); });
        }
      });
    });
    return found;
  }

  function changedRecords(xml) {
    return recordsIn(xml, CHANGED);
  }

  /** The document that edits no field of these records, so that the component marks them as changed again. */
  function untouched(records) {
    return element('harbrook', {}, records.map(function (record) {
      var parts = record.key.split('\n');
      return inSection(record.section, { order: parts[0], activity: parts[1], line: parts[2] }, '', '');
    }).join(''));
  }

  function withState(attributes, state) {
    if (state) { attributes.State = state; }
    return attributes;
  }

  /** One record in its section and group; `content` is the XML of its fields. */
  function inSection(section, key, state, content) {
    var record;
    if (section === SECTIONS.order) {
      record = element('record', withState({ ServiceOrder: key.order }, state), content);
    } else if (section === SECTIONS.activity) {
      record = element('ServiceOrder', { ID: key.order }, element('record', withState({ Activity: key.activity }, state), content));
    } else {
      record = element('ServiceOrder', { ID: key.order, Activity: key.activity },
        element('record', withState({ LineNumber: key.line }, state), content));
    }
    return element(section, {}, record);
  }

  /** The keys of a report's entries with this status. */
  function keysIn(report, status) {
    return Array.prototype.filter.call(parse(report).getElementsByTagName('*'), function (entry) {
      return entry.getAttribute('Status') === status;
    }).map(function (entry) {
      return keyOf(entry.getAttribute('Order'), entry.getAttribute('Activity'), entry.getAttribute('CostLine'), entry.getAttribute('CostType'));
    });
  }

  /** The document of a text; "" stands for an empty one, since a parser would complain. */
  function parse(xml) {
    xml = xml || '<none/>';
    return new root.DOMParser().parseFromString(xml, 'text/xml');
  }

  Tandril.records = {
    escape: escape,

    /** How many new and changed records a document holds. */
    countChanged: function (xml) {
      return changedRecords(xml).length;
    },

    /** How many records of a store are new or changed, but for those that the server has confirmed as they are. */
    countWaiting: function (xml, confirmed) {
      return changedRecords(xml).filter(function (record) { return confirmed[record.key] !== digest(record.element); }).length;
    },

    /** How many records of a store were sent and are neither confirmed nor, by the stored report, refused. */
    countUnanswered: function (xml, report) {
      var refused = keysIn(report, 'Error');
      return recordsIn(xml, SENT).filter(function (record) { return refused.indexOf(record.key) < 0; }).length;
    },

    /** The keys of the records of a store that are marked as sent, and so are as they were sent. */
    sentKeys: function (store) {
      return recordsIn(store, SENT).map(function (record) { return record.key; });
    },

    /**
     * The records of a store that a report confirms and that the store marks as changed again although they are as they
     * were sent: digests by key. For the engineer they are settled as long as they stay so. `sent` holds the keys that
     * were marked as sent before the report was stored; what is not among them was edited since.
     */
    confirmed: function (store, report, sent) {
      var settled = {};
      var digests = {};
      changedRecords(store).forEach(function (record) { digests[record.key] = digest(record.element); });
      keysIn(report, 'Completed').forEach(function (key) {
        if (digests[key] !== undefined && sent.indexOf(key) >= 0) { settled[key] = digests[key]; }
      });
      return settled;
    },

    /** About how many characters of the browser's storage the upload of a store's changes takes. */
    sizeOfUpload: function (xml) {
      var document = parse(xml);
      var registrations = document.getElementsByTagName(REGISTRATIONS)[0];
      return changedRecords(xml).reduce(function (size, record) {
        return size + sizeOf(record.element);
      }, sizeOf(registrations) + GROUP_SIZE * document.getElementsByTagName('ServiceOrder').length);
    },

    /** A report that refuses all records of an upload for one reason; "" when it holds none. */
    refusal: function (upload, reason, id) {
      var entries = changedRecords(upload).map(function (record) {
        var parts = record.key.split('\n');
        return element('Record', {
          Status: 'Error', Order: parts[0], Activity: parts[1], CostLine: parts[2], CostType: parts[3], Description: reason
        }, '');
      });
      return entries.length ? element('UploadReport', {}, element('File', { ID: id }, entries.join(''))) : '';
    },

    /** The document that marks an upload's records as changed again. */
    again: function (upload) {
      return untouched(changedRecords(upload));
    },

    /** The keys of the records of a store that the next upload takes. */
    changedKeys: function (store) {
      return changedRecords(store).map(function (record) { return record.key; });
    },

    /** The document that marks those of the keys as changed again that are marked as sent; "" when none is. */
    takeBack: function (store, keys) {
      var sent = recordsIn(store, SENT).filter(function (record) { return keys.indexOf(record.key) >= 0; });
      return sent.length ? untouched(sent) : '';
    },

    /** The document with one record. key: {order, activity, line}; fields: [{name, value}]. */
    xml: function (kind, key, fields, isNew) {
      var ordered = isNew ? withStatusFirst(kind, fields) : fields;
      var content = ordered.map(function (field) { return element(field.name, {}, escape(field.value)); }).join('');
      return element('harbrook', {}, inSection(SECTIONS[kind], key, isNew ? 'N' : '', content));
    }
  };
}(typeof window === 'undefined' ? global : window));
