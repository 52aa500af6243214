/* Dates and times as the forms show them, and the stamps that the store keeps: "20261115 103000". */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  var DATE = /^(\d{1,2})([\/.-]?)(\d{1,2})\2(\d{4})$/;
  var TIME = /^(\d{1,2}):?(\d{2})(?::?(\d{2}))?$/;

  function two(number) {
    return (number < 10 ? '0' : '') + number;
  }

  /** "yyyymmdd" for a month, day and year, with or without separators; null for what is no date of the calendar. */
  function readDate(text) {
    var match = DATE.exec(text.trim());
    if (!match || match[2] === '' && text.trim().length !== 8) { return null; }
    var month = Number(match[1]);
    var day = Number(match[3]);
    var year = Number(match[4]);
    var date = new Date(year, month - 1, day);
    if (date.getMonth() !== month - 1 || date.getDate() !== day || date.getFullYear() !== year) { return null; }
    return match[4] + two(month) + two(day);
  }

  /** "hhmmss" for an hour and minutes, "000000" for nothing; null for what is no time of day. */
  function readTime(text) {
    if (text.trim() === '') { return '000000'; }
    var match = TIME.exec(text.trim());
    if (!match || Number(match[1]) > 23 || Number(match[2]) > 59 || Number(match[3] || 0) > 59) { return null; }
    return two(Number(match[1])) + match[2] + (match[3] || '00');
  }

  Tandril.stamps = {
    readDate: readDate,
    readTime: readTime,

    /** The stamp of a date and a time text; "" when both are empty, null when one of them does not read. */
    read: function (date, time) {
      if (date.trim() === '' && time.trim() === '') { return ''; }
      var day = readDate(date);
      var hour = readTime(time);
      return day === null || hour === null ? null : day + ' ' + hour;
    }
  };
}(typeof window === 'undefined' ? global : window));
