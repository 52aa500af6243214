/* Small helpers that build the document. Texts go in as text nodes only; nothing here reads markup. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  /**
   * An element with attributes and children. An attribute "on..." takes a listener, `null` and `false` leave an
   * attribute out, a text among the children becomes a text node.
   */
  function make(tag, attributes, children) {
    var element = document.createElement(tag);
    Object.keys(attributes || {}).forEach(function (name) {
      var value = attributes[name];
      if (typeof value === 'function') {
        element.addEventListener(name.replace(/^on/, ''), value);
      } else if (value !== null && value !== undefined && value !== false) {
        element.setAttribute(name, value === true ? '' : String(value));
      }
    });
    append(element, children);
    return element;
  }

  function append(element, children) {
    [].concat(children === undefined || children === null ? [] : children).forEach(function (child) {
      if (child === null || child === undefined || child === '') { return; }
      element.appendChild(typeof child === 'object' ? child : document.createTextNode(String(child)));
    });
    return element;
  }

  function empty(element) {
    while (element.firstChild) { element.removeChild(element.firstChild); }
    return element;
  }

  function each(list, act) {
    Array.prototype.forEach.call(list, act);
  }

  /** The element or the nearest one around it that has the class; null when there is none below `limit`. */
  function around(element, name, limit) {
    for (; element && element !== limit; element = element.parentNode) {
      if (element.classList && element.classList.contains(name)) { return element; }
    }
    return null;
  }

  /** `wanted` as an id if it is a plain name that no element of the document has, else one made from it. */
  function freeId(wanted) {
    var base = /^[A-Za-z_][\w.-]*$/.test(wanted) ? wanted : 'control';
    for (var n = 1, id = base; ; id = base + '-' + (++n)) {
      if (!document.getElementById(id) && !pending[id]) {
        pending[id] = true;
        return id;
      }
    }
  }

  /* Ids given to elements that are not in the document yet. */
  var pending = {};

  Tandril.dom = {
    make: make, append: append, empty: empty, each: each, around: around, freeId: freeId,
    forgetIds: function () { pending = {}; }
  };
}(window));
