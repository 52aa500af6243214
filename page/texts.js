/*
 * The page's own words. Labels of fields and the titles of panels are not here: they come with the fragments.
 * A text may hold {0}, {1}, ... for what is filled in.
 */
(function (root) {
  'use strict';

  var Tandril = root.Tandril = root.Tandril || {};

  var TEXTS = {
    en: {
      skipToList: 'Skip to the list',
      menu: 'Menu', views: 'Views', list: 'List', details: 'Details', costHeader: 'Cost lines of the activity',
      costLines: 'Cost lines by type', costs: 'Cost lines', masterData: 'Master data',
      Online: 'Online', Offline: 'Offline',

      groupActivities: 'Activities', groupOrders: 'Orders', groupCosts: 'Cost lines', groupHours: 'Hour registrations', groupNew: 'New',
      groupServer: 'Server', groupMasterData: 'Master data',
      myActivities: 'My activities', activitiesOpen: 'Activities in work', activitiesSent: 'Activities sent',
      completed: 'Completed', cancelled: 'Cancelled', orders: 'All orders', ordersOpen: 'Orders in work', ordersSent: 'Orders sent',
      materialOpen: 'Material in work', materialSent: 'Material sent', labourOpen: 'Labour in work', labourSent: 'Labour sent',
      otherOpen: 'Other costs in work', otherSent: 'Other costs sent', hours: 'All hours', hoursOpen: 'Hours in work',
      hoursSent: 'Hours sent', newOrder: 'New order', newActivity: 'New activity', newMaterial: 'New material line',
      newHours: 'New hour registration', refused: 'Refused records',

      filter: 'Filter', countOf: '{0} of {1}', sortBy: 'Sort by {0}', close: 'Close', minimize: 'Minimize', restore: 'Restore',
      lookUp: 'Look up {0}', pickDate: 'Choose a date for {0}', timeOf: '{0}, time',

      starting: 'Starting', loading: 'Loading', rowsShown: '{0}: {1} records', nothingHere: 'There is nothing to show here.',
      saved: 'Saved.', added: 'Added.', deleted: 'Deleted.', nothingChanged: 'Nothing was changed.',
      badDate: 'Write the date as mm/dd/yyyy and the time as hhmm, 24 hours.', checkFields: 'Please correct the marked fields.',
      firstRun: 'Fetching your work from the enterprise server',
      firstRunDone: 'Your work has been fetched.',
      noServer: 'The enterprise server cannot be reached. What is stored here can be worked on; the rest comes with the next connection.',
      serverSaid: 'The enterprise server answered with status {0}. Nothing was changed.',
      lost: 'The program behind this page does not answer. Start it again and reload the page; stored work is not lost.',
      refusedCall: 'The program behind this page refused the call: {0}. Reload the page from the address that it printed.',
      fault: '{0} ended in a fault: {1}', invalid: '{0} was not understood: {1}',

      confirmDelete: 'Delete this record?', confirmDeleteText: '{0} is removed from this computer. This cannot be undone.',
      confirmDiscard: 'Discard the changes?', confirmDiscardText: 'The form holds changes that are not saved.',
      yesDelete: 'Delete', yesDiscard: 'Discard', no: 'Cancel',
      order: 'Order {0}', activity: 'Activity {0}', line: 'Line {0}'
    }
  };

  var language = 'en';

  /** The text of a key in the page's language, in English where that lacks it. */
  Tandril.text = function (key) {
    var values = Array.prototype.slice.call(arguments, 1);
    var pattern = TEXTS[language][key] || TEXTS.en[key] || key;
    return pattern.replace(/\{(\d)\}/g, function (whole, index) {
      return values[index] === undefined ? '' : String(values[index]);
    });
  };

  /** Takes the first of the wanted languages that the page knows. */
  Tandril.chooseLanguage = function (wanted) {
    var known = wanted.map(function (tag) { return String(tag).slice(0, 2).toLowerCase(); })
      .filter(function (tag) { return TEXTS.hasOwnProperty(tag); });
    language = known[0] || 'en';
    return language;
  };

  Tandril.TEXTS = TEXTS;
}(window));
