/* The page's icons, drawn on a field of 24 by 24 with a line of 2. */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};
  var SVG = 'http://www.w3.org/2000/svg';

  var PATHS = {
    activity: 'M9 11l3 3L22 4 M21 12v7a2 2 0 0 1-2 2H5a2 2 0 0 1-2-2V5a2 2 0 0 1 2-2h11',
    calendar: 'M5 5h14a2 2 0 0 1 2 2v12a2 2 0 0 1-2 2H5a2 2 0 0 1-2-2V7a2 2 0 0 1 2-2z M16 3v4 M8 3v4 M3 11h18',
    cancel: 'M12 3a9 9 0 1 0 0 18 9 9 0 0 0 0-18z M15 9l-6 6 M9 9l6 6',
    check: 'M5 13l4 4L19 7',
    clock: 'M12 3a9 9 0 1 0 0 18 9 9 0 0 0 0-18z M12 7v5l3 2',
    close: 'M18 6L6 18 M6 6l12 12',
    database: 'M4 6c0-1.7 3.6-3 8-3s8 1.3 8 3-3.6 3-8 3-8-1.3-8-3z M4 6v12c0 1.7 3.6 3 8 3s8-1.3 8-3V6 M4 12c0 1.7 3.6 3 8 3s8-1.3 8-3',
    down: 'M6 9l6 6 6-6',
    error: 'M12 3L2 20h20L12 3z M12 10v4 M12 17v.1',
    left: 'M15 6l-6 6 6 6',
    menu: 'M4 6h16 M4 12h16 M4 18h16',
    minimize: 'M5 12h14',
    order: 'M14 3H6a2 2 0 0 0-2 2v14a2 2 0 0 0 2 2h12a2 2 0 0 0 2-2V9z M14 3v6h6 M8 13h8 M8 17h5',
    pen: 'M12 20h9 M16.5 3.5a2.1 2.1 0 0 1 3 3L7 19l-4 1 1-4z',
    plus: 'M12 5v14 M5 12h14',
    right: 'M9 6l6 6-6 6',
    search: 'M11 4a7 7 0 1 0 0 14 7 7 0 0 0 0-14z M21 21l-5-5',
    sent: 'M22 2L11 13 M22 2l-7 20-4-9-9-4z',
    settings: 'M4 7h9 M19 7h1 M4 17h1 M11 17h9 M16 4.5a2.5 2.5 0 1 0 0 5 2.5 2.5 0 0 0 0-5z M8 14.5a2.5 2.5 0 1 0 0 5 2.5 2.5 0 0 0 0-5z',
    sync: 'M21 4v6h-6 M3 20v-6h6 M4 9a8 8 0 0 1 14-3l3 4 M20 15a8 8 0 0 1-14 3l-3-4',
    tool: 'M14.7 6.3a4 4 0 0 0 5 5L12 19a2.8 2.8 0 0 1-4-4z M14.7 6.3L17 4',
    up: 'M6 15l6-6 6 6'
  };

  /** A picture that stands beside a text or in a control with a label of its own. */
  Tandril.icon = function (name) {
    var picture = document.createElementNS(SVG, 'svg');
    picture.setAttribute('viewBox', '0 0 24 24');
    picture.setAttribute('aria-hidden', 'true');
    picture.setAttribute('focusable', 'false');
    picture.setAttribute('class', 'icon');
    var path = document.createElementNS(SVG, 'path');
    path.setAttribute('d', PATHS[name] || '');
    picture.appendChild(path);
    return picture;
  };
}(window));
