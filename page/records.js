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

  /* Orders stand in their section, everything else in groups below theirs;. */
  function recordsIn(section) {
    if (section.nodeName === SECTIONS.order) { return childrenOf(section); }
    return childrenOf(section).reduce(function (all, group) { return all.concat(childrenOf(group)); }, []);
  }

  Tandril.records = {
    escape: escape,

    /** How many records of a store's XML are new or changed and not in an upload. */
    countWaiting: function (xml) {
      var store = new root.DOMParser().parseFromString(xml, 'text/xml');
      return childrenOf(store.documentElement).reduce(function (sum, section) {
        return sum + recordsIn(section).filter(function (record) {
          return record.getAttribute('State') === 'N' || record.getAttribute('State') === 'M';
        }).length;
      }, 0);
    },

    /** The document with one record. key: {order, activity, line}; fields: [{name, value}]. */
    xml: function (kind, key, fields, isNew) {
      var ordered = isNew ? withStatusFirst(kind, fields) : fields;
      var content = ordered.map(function (field) { return element(field.name, {}, escape(field.value)); }).join('');
      var own = kind === 'order' ? { ServiceOrder: key.order }
        : kind === 'activity' ? { Activity: key.activity } : { LineNumber: key.line };
      if (isNew) { own.State = 'N'; }
      var record = element('record', own, content);
      if (kind === 'activity') { record = element('ServiceOrder', { ID: key.order }, record); }
      if (kind !== 'order' && kind !== 'activity') {
        record = element('ServiceOrder', { ID: key.order, Activity: key.activity }, record);
      }
      return element('harbrook', {}, element(SECTIONS[kind], {}, record));
    }
  };
}(typeof window === 'undefined' ? global : window));
