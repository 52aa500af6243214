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
      groupMasterData: 'Master data',
      myActivities: 'My activities', activitiesOpen: 'Activities in work', activitiesSent: 'Activities sent',
      completed: 'Completed', cancelled: 'Cancelled', orders: 'All orders', ordersOpen: 'Orders in work', ordersSent: 'Orders sent',
      materialOpen: 'Material in work', materialSent: 'Material sent', labourOpen: 'Labour in work', labourSent: 'Labour sent',
      otherOpen: 'Other costs in work', otherSent: 'Other costs sent', hours: 'All hours', hoursOpen: 'Hours in work',
      hoursSent: 'Hours sent', newOrder: 'New order', newActivity: 'New activity', newMaterial: 'New material line',
      newHours: 'New hour registration', refused: 'Refused records',

      filter: 'Filter', countOf: '{0} of {1}', sortBy: 'Sort by {0}', close: 'Close', minimize: 'Minimize',
      lookUp: 'Look up {0}', pickDate: 'Choose a date for {0}', timeOf: '{0}, time',
      monthBefore: 'Month before', monthAfter: 'Next month', hour: 'Hour', minute: 'Minute', now: 'Now', take: 'Choose',
      saveKey: '{0} (Ctrl+S)', dropOrder: 'Service Order', dropActivity: 'Service Activity', materialLine: 'Material Line Id',

      loading: 'Loading', rowsShown: '{0}, records: {1}', nothingHere: 'There is nothing to show here.',
      saved: 'Saved.', added: 'Added.', deleted: 'Deleted.',
      badDate: 'Write the date as mm/dd/yyyy and the time as hhmm, 24 hours.', checkFields: 'Please correct the marked fields.',
      firstRun: 'Fetching your work from the enterprise server',
      firstRunDone: 'Your work has been fetched.',
      noServer: 'The enterprise server cannot be reached. What is stored here can be worked on; the rest comes with the next connection.',
      lost: 'The program behind this page does not answer. Start it again and reload the page; stored work is not lost.',
      refusedCall: 'The program behind this page refused the call: {0}. Reload the page from the address that it printed.',
      fault: '{0} ended in a fault: {1}', invalid: '{0} was not understood: {1}',

      confirmDelete: 'Delete this record?', confirmDeleteText: '{0} is removed from this computer. This cannot be undone.',
      confirmDiscard: 'Discard the changes?', confirmDiscardText: 'The form holds changes that are not saved.',
      yesDelete: 'Delete', yesDiscard: 'Discard', no: 'Cancel',
      synchronise: 'Synchronise', goOnline: 'Work online', goOffline: 'Work offline',
      step_send: 'Send changes', step_report: 'Store the answer', step_download: 'Fetch orders', step_masterData: 'Fetch master data',
      syncNever: 'Never synchronised', syncJustNow: 'Synchronised just now', syncAgo: 'Synchronised {0} ago', syncFor: '{0} (for {1})',
      spanMinutes: '{0} min', spanHours: '{0} h', spanDays: '{0} days', syncWaiting: 'changes waiting: {0}', syncNoneWaiting: 'nothing waits',
      syncUnanswered: 'one upload has no answer yet, records in it: {0}', syncInterrupted: 'an upload was interrupted before it left',
      syncOther: 'another window is synchronising', syncSentOpen: 'sent, but not answered: {0}', syncChanges: 'Changes received: {0}.',
      syncElsewhere: 'Another window is synchronising. Wait until it has finished.',
      syncCancelled: 'Cancelled. What was done so far is kept; the rest comes with the next synchronisation.',
      syncNotSent: 'The connection was lost. Your changes are kept here and go out again, unchanged, with the next synchronisation.',
      syncNoServer: 'The enterprise server cannot be reached. Nothing was changed; try again later.',
      syncServerSaid: 'The enterprise server answered with status {0}: {1}', syncServerStatus: 'The enterprise server answered with status {0}.',
      syncStaysHere: 'Your changes are kept here and go out again, unchanged, with the next synchronisation. Tell the office if it stays so.',
      syncUnchanged: 'Nothing was changed; try again later, and tell the office if it stays so.',
      syncNoReport: 'The answer to your changes cannot be read, so they do not count as sent. They are kept here and go out again, unchanged, with the next synchronisation. If this network wants you to sign in, do that first.',
      syncForeign: 'What came is not what was asked for, or only a part of it. Nothing was changed; try again. If this network wants you to sign in, do that first.',
      syncCancelling: 'Cancelling: what has begun is brought to its end.',
      syncCancelledSent: 'Cancelled. The server may have your changes already. They are kept here and go out again, unchanged, with the next synchronisation.',
      syncSilent: 'The server has been silent for {0} s. You can wait or cancel; nothing is lost.',
      syncUp: '{1} KiB sent, records in them: {0}', syncDown: '{0} KiB received', syncTaking: '{0} KiB received, records in them: {1}. They are being stored.',
      syncAgain: 'An earlier upload without an answer goes out again first.', syncAnswered: 'The answer was here already.',
      syncNothing: 'There was nothing to send.', syncSent: 'Records sent: {0}.', syncReported: '{0} accepted, {1} refused.',
      syncMasterFailed: 'The master data could not be stored: {0}. Changes and orders are done; tell the office if it stays so.',
      syncNoDatabase: 'There is no database on this computer.',

      syncUploadRefused: 'one upload was refused',
      syncUnkept: 'one upload is only in this window, do not close it',
      noStorage: 'this browser keeps no input that is not saved',
      journalDamaged: 'The record of the last synchronisation cannot be read and was put aside. If an upload was under way, look at what was sent; its text is in the file Upload.xml.',
      syncRefused: 'The server will refuse the same upload again, and nothing new is sent before it. Keep it if the server will be corrected. Drop it to correct the records yourself.',
      syncRefusedKept: 'The upload is kept and goes out again with the next synchronisation.',
      syncKeep: 'Keep it',
      syncSaveCopy: 'Save a copy',
      syncDrop: 'Drop it',
      confirmDrop: 'Drop the refused upload?',
      confirmDropText: 'Its records stay as they are on this computer and are listed as refused. Each goes out again when you save it.',
      syncDropped: 'The refused upload was dropped. Its records are listed as refused.',
      syncNoRoom: 'There is no room to keep the upload while it is sent. If the connection breaks then, only this window knows what was sent.',
      syncDoNotSend: 'Do not send',
      syncSendAnyway: 'Send anyway',
      syncNothingDone: 'Nothing was sent. Your changes are stored here and wait.',

      refusedBecause: 'The server refused this record',
      refusedAdvice: 'Correct it and save it, or send it again as it is: it goes out with the next synchronisation.',
      sendAgain: 'Send again',
      discardRecord: 'Discard',
      goesOutAgain: 'The record goes out again with the next synchronisation.',
      confirmRefusal: 'Discard this record?',
      confirmRefusalLocal: 'It was made on this computer. It is removed from here with everything below it. This cannot be undone.',
      confirmRefusalServer: 'It is removed from this computer with everything below it, your changes included. The next synchronisation fetches the record as the server has it, if the server still hands it out.',
      refusalDiscarded: 'Discarded.',

      settings: 'Settings',
      databaseNow: 'Master data comes from the database',
      databaseNone: 'none',
      databaseName: 'Name of another database in the folder of master data',
      databaseUse: 'Use',
      databaseChosen: 'Master data now comes from "{0}".',
      databaseMissing: '"{0}" is chosen, but there is no such database in the folder of master data, or it cannot be read.',
      archiveName: 'Name of a delivered archive of master data',
      archiveStart: 'Unpack',
      badName: 'Write the name of a file, without folders.',
      archiveStarted: '"{0}" was started and unpacks itself.',
      archiveStartedUnseen: '"{0}" was asked to unpack itself. If it is missing, a window of its own says so.',

      order: 'Order {0}', activity: 'Activity {0}', line: 'Line {0}',
      draftFound: 'Input of {0} was not saved.', draftTake: 'Recover', draftDrop: 'Discard'
    },

    de: {
      skipToList: 'Zur Liste springen',
      menu: 'Menü', views: 'Ansichten', list: 'Liste', details: 'Einzelheiten', costHeader: 'Kostenzeilen der Aktivität',
      costLines: 'Kostenzeilen nach Art', costs: 'Kostenzeilen', masterData: 'Stammdaten',
      Online: 'Online', Offline: 'Offline',

      groupActivities: 'Aktivitäten', groupOrders: 'Aufträge', groupCosts: 'Kostenzeilen', groupHours: 'Stundenbuchungen',
      groupNew: 'Neu', groupMasterData: 'Stammdaten',
      myActivities: 'Meine Aktivitäten', activitiesOpen: 'Aktivitäten in Arbeit', activitiesSent: 'Gesendete Aktivitäten',
      completed: 'Abgeschlossen', cancelled: 'Storniert', orders: 'Alle Aufträge', ordersOpen: 'Aufträge in Arbeit',
      ordersSent: 'Gesendete Aufträge', materialOpen: 'Material in Arbeit', materialSent: 'Material gesendet',
      labourOpen: 'Arbeitszeit in Arbeit', labourSent: 'Arbeitszeit gesendet', otherOpen: 'Sonstiges in Arbeit',
      otherSent: 'Sonstiges gesendet', hours: 'Alle Stunden', hoursOpen: 'Stunden in Arbeit', hoursSent: 'Gesendete Stunden',
      newOrder: 'Neuer Auftrag', newActivity: 'Neue Aktivität', newMaterial: 'Neue Materialzeile', newHours: 'Neue Stundenbuchung',
      refused: 'Abgelehnte Sätze',

      filter: 'Filtern', countOf: '{0} von {1}', sortBy: 'Nach {0} sortieren', close: 'Schließen', minimize: 'Verkleinern',
      lookUp: '{0} nachschlagen', pickDate: 'Datum wählen: {0}', timeOf: '{0}, Uhrzeit',
      monthBefore: 'Voriger Monat', monthAfter: 'Nächster Monat', hour: 'Stunde', minute: 'Minute', now: 'Jetzt', take: 'Übernehmen',
      saveKey: '{0} (Strg+S)', dropOrder: 'Serviceauftrag', dropActivity: 'Serviceaktivität', materialLine: 'Nummer der Materialzeile',

      loading: 'Lädt', rowsShown: '{0}, Sätze: {1}', nothingHere: 'Hier gibt es nichts zu zeigen.',
      saved: 'Gespeichert.', added: 'Angelegt.', deleted: 'Gelöscht.',
      badDate: 'Bitte das Datum als mm/dd/yyyy (Monat/Tag/Jahr) und die Uhrzeit als hhmm schreiben.',
      checkFields: 'Bitte die markierten Felder berichtigen.',
      firstRun: 'Die Arbeit wird vom Unternehmensserver geholt', firstRunDone: 'Die Arbeit wurde geholt.',
      noServer: 'Der Unternehmensserver ist nicht zu erreichen. Mit dem, was hier gespeichert ist, kann gearbeitet werden; das Übrige kommt mit der nächsten Verbindung.',
      lost: 'Das Programm hinter dieser Seite antwortet nicht. Bitte neu starten und die Seite neu laden; Gespeichertes geht nicht verloren.',
      refusedCall: 'Das Programm hinter dieser Seite hat den Aufruf abgelehnt: {0}. Bitte die Seite über die Adresse laden, die es ausgegeben hat.',
      fault: '{0} endete mit einem Fehler: {1}', invalid: '{0} wurde nicht verstanden: {1}',

      confirmDelete: 'Diesen Satz löschen?',
      confirmDeleteText: '{0} wird von diesem Rechner entfernt. Das lässt sich nicht rückgängig machen.',
      confirmDiscard: 'Änderungen verwerfen?', confirmDiscardText: 'Das Formular enthält Änderungen, die nicht gespeichert sind.',
      yesDelete: 'Löschen', yesDiscard: 'Verwerfen', no: 'Abbrechen',
      synchronise: 'Abgleichen', goOnline: 'Online arbeiten', goOffline: 'Offline arbeiten',
      step_send: 'Änderungen senden', step_report: 'Antwort ablegen', step_download: 'Aufträge holen', step_masterData: 'Stammdaten holen',
      syncNever: 'Noch nie abgeglichen', syncJustNow: 'Gerade abgeglichen', syncAgo: 'Vor {0} abgeglichen', syncFor: '{0} (seit {1})',
      spanMinutes: '{0} Min.', spanHours: '{0} Std.', spanDays: '{0} Tagen', syncWaiting: 'wartende Änderungen: {0}', syncNoneWaiting: 'nichts wartet',
      syncUnanswered: 'eine Sendung ist noch ohne Antwort, Sätze darin: {0}', syncInterrupted: 'eine Sendung wurde unterbrochen, bevor sie hinausging',
      syncOther: 'ein anderes Fenster gleicht gerade ab', syncSentOpen: 'gesendet, aber ohne Antwort: {0}', syncChanges: 'Empfangene Änderungen: {0}.',
      syncElsewhere: 'Ein anderes Fenster gleicht gerade ab. Bitte warten, bis es fertig ist.',
      syncCancelled: 'Abgebrochen. Was schon getan ist, bleibt; das Übrige kommt mit dem nächsten Abgleich.',
      syncNotSent: 'Die Verbindung ging verloren. Die Änderungen bleiben hier und gehen beim nächsten Abgleich unverändert noch einmal hinaus.',
      syncNoServer: 'Der Unternehmensserver ist nicht zu erreichen. Es wurde nichts geändert; bitte später noch einmal.',
      syncServerSaid: 'Der Unternehmensserver antwortete mit Status {0}: {1}', syncServerStatus: 'Der Unternehmensserver antwortete mit Status {0}.',
      syncStaysHere: 'Die Änderungen bleiben hier und gehen beim nächsten Abgleich unverändert noch einmal hinaus. Bleibt es so, bitte im Büro melden.',
      syncUnchanged: 'Es wurde nichts geändert; bitte später noch einmal, und im Büro melden, wenn es so bleibt.',
      syncNoReport: 'Die Antwort auf die Änderungen ist nicht lesbar, also gelten sie nicht als gesendet. Sie bleiben hier und gehen beim nächsten Abgleich unverändert noch einmal hinaus. Verlangt dieses Netz eine Anmeldung, bitte zuerst anmelden.',
      syncForeign: 'Was kam, ist nicht das Verlangte oder nur ein Teil davon. Es wurde nichts geändert; bitte noch einmal. Verlangt dieses Netz eine Anmeldung, bitte zuerst anmelden.',
      syncCancelling: 'Wird abgebrochen; was begonnen hat, wird zu Ende gebracht.',
      syncCancelledSent: 'Abgebrochen. Der Server hat die Änderungen vielleicht schon. Sie bleiben hier und gehen beim nächsten Abgleich unverändert noch einmal hinaus.',
      syncSilent: 'Der Server schweigt seit {0} s. Warten oder abbrechen; verloren geht nichts.',
      syncUp: '{1} KiB gesendet, Sätze darin: {0}', syncDown: '{0} KiB empfangen', syncTaking: '{0} KiB empfangen, Sätze darin: {1}. Sie werden abgelegt.',
      syncAgain: 'Eine frühere Sendung ohne Antwort geht zuerst noch einmal hinaus.', syncAnswered: 'Die Antwort lag schon vor.',
      syncNothing: 'Es gab nichts zu senden.', syncSent: 'Gesendete Sätze: {0}.', syncReported: '{0} angenommen, {1} abgelehnt.',
      syncMasterFailed: 'Die Stammdaten ließen sich nicht ablegen: {0}. Änderungen und Aufträge sind erledigt; bitte im Büro melden, wenn es so bleibt.',
      syncNoDatabase: 'Auf diesem Rechner ist keine Datenbank.',

      syncUploadRefused: 'eine Sendung wurde abgelehnt',
      syncUnkept: 'eine Sendung liegt nur in diesem Fenster, bitte nicht schließen',
      noStorage: 'dieser Browser behält keine ungesicherten Eingaben',
      journalDamaged: 'Die Aufzeichnung des letzten Abgleichs ist nicht lesbar und wurde beiseitegelegt. War eine Sendung unterwegs, bitte das Gesendete prüfen; ihr Text steht in der Datei Upload.xml.',
      syncRefused: 'Der Server wird dieselbe Sendung wieder ablehnen, und vor ihr geht nichts Neues hinaus. Bitte behalten, wenn der Server berichtigt wird; verwerfen, um die Sätze selbst zu berichtigen.',
      syncRefusedKept: 'Die Sendung bleibt hier und geht beim nächsten Abgleich noch einmal hinaus.',
      syncKeep: 'Behalten',
      syncSaveCopy: 'Kopie sichern',
      syncDrop: 'Sendung verwerfen',
      confirmDrop: 'Die abgelehnte Sendung verwerfen?',
      confirmDropText: 'Ihre Sätze bleiben auf diesem Rechner, wie sie sind, und stehen unter den abgelehnten. Jeder geht wieder hinaus, sobald er gespeichert wird.',
      syncDropped: 'Die abgelehnte Sendung wurde verworfen. Ihre Sätze stehen unter den abgelehnten.',
      syncNoRoom: 'Es ist kein Platz da, die Sendung zu behalten, solange sie unterwegs ist. Bricht dann die Verbindung ab, weiß nur dieses Fenster, was gesendet wurde.',
      syncDoNotSend: 'Nicht senden',
      syncSendAnyway: 'Trotzdem senden',
      syncNothingDone: 'Es wurde nichts gesendet. Die Änderungen sind hier gespeichert und warten.',

      refusedBecause: 'Der Server hat diesen Satz abgelehnt',
      refusedAdvice: 'Bitte berichtigen und speichern, oder unverändert noch einmal senden: Er geht mit dem nächsten Abgleich hinaus.',
      sendAgain: 'Noch einmal senden',
      discardRecord: 'Verwerfen',
      goesOutAgain: 'Der Satz geht mit dem nächsten Abgleich noch einmal hinaus.',
      confirmRefusal: 'Diesen Satz verwerfen?',
      confirmRefusalLocal: 'Er wurde auf diesem Rechner angelegt. Er wird hier mit allem darunter entfernt. Das lässt sich nicht rückgängig machen.',
      confirmRefusalServer: 'Er wird mit allem darunter von diesem Rechner entfernt, die eigenen Änderungen eingeschlossen. Der nächste Abgleich holt den Satz, wie der Server ihn hat, wenn der Server ihn noch herausgibt.',
      refusalDiscarded: 'Verworfen.',

      settings: 'Einstellungen',
      databaseNow: 'Die Stammdaten kommen aus der Datenbank',
      databaseNone: 'keiner',
      databaseName: 'Name einer anderen Datenbank im Ordner der Stammdaten',
      databaseUse: 'Verwenden',
      databaseChosen: 'Die Stammdaten kommen jetzt aus "{0}".',
      databaseMissing: '"{0}" ist gewählt, aber im Ordner der Stammdaten gibt es diese Datenbank nicht, oder sie ist nicht lesbar.',
      archiveName: 'Name eines gelieferten Archivs mit Stammdaten',
      archiveStart: 'Entpacken',
      badName: 'Bitte den Namen einer Datei schreiben, ohne Ordner.',
      archiveStarted: '"{0}" wurde gestartet und entpackt sich.',
      archiveStartedUnseen: '"{0}" wurde zum Entpacken gestartet. Fehlt das Archiv, sagt es ein eigenes Fenster.',

      order: 'Auftrag {0}', activity: 'Aktivität {0}', line: 'Zeile {0}',
      draftFound: 'Eingaben vom {0} wurden nicht gespeichert.', draftTake: 'Wiederherstellen', draftDrop: 'Verwerfen'
    },

    nl: {
      skipToList: 'Naar de lijst',
      menu: 'Menu', views: 'Overzichten', list: 'Lijst', details: 'Details', costHeader: 'Kostenregels van de activiteit',
      costLines: 'Kostenregels per soort', costs: 'Kostenregels', masterData: 'Stamgegevens',
      Online: 'Online', Offline: 'Offline',

      groupActivities: 'Activiteiten', groupOrders: 'Orders', groupCosts: 'Kostenregels', groupHours: 'Urenregistraties',
      groupNew: 'Nieuw', groupMasterData: 'Stamgegevens',
      myActivities: 'Mijn activiteiten', activitiesOpen: 'Activiteiten in bewerking', activitiesSent: 'Verzonden activiteiten',
      completed: 'Voltooid', cancelled: 'Geannuleerd', orders: 'Alle orders', ordersOpen: 'Orders in bewerking',
      ordersSent: 'Verzonden orders', materialOpen: 'Materiaal in bewerking', materialSent: 'Materiaal verzonden',
      labourOpen: 'Arbeid in bewerking', labourSent: 'Arbeid verzonden', otherOpen: 'Overig in bewerking', otherSent: 'Overig verzonden',
      hours: 'Alle uren', hoursOpen: 'Uren in bewerking', hoursSent: 'Verzonden uren',
      newOrder: 'Nieuwe order', newActivity: 'Nieuwe activiteit', newMaterial: 'Nieuwe materiaalregel', newHours: 'Nieuwe urenregistratie',
      refused: 'Geweigerde records',

      filter: 'Filteren', countOf: '{0} van {1}', sortBy: 'Sorteren op {0}', close: 'Sluiten', minimize: 'Verkleinen',
      lookUp: '{0} opzoeken', pickDate: 'Datum kiezen: {0}', timeOf: '{0}, tijd',
      monthBefore: 'Vorige maand', monthAfter: 'Volgende maand', hour: 'Uur', minute: 'Minuut', now: 'Nu', take: 'Kiezen',
      saveKey: '{0} (Ctrl+S)', dropOrder: 'Serviceorder', dropActivity: 'Serviceactiviteit', materialLine: 'Nummer van de materiaalregel',

      loading: 'Laden', rowsShown: '{0}, records: {1}', nothingHere: 'Hier is niets te tonen.',
      saved: 'Opgeslagen.', added: 'Toegevoegd.', deleted: 'Verwijderd.',
      badDate: 'Schrijf de datum als mm/dd/yyyy (maand/dag/jaar) en de tijd als hhmm.',
      checkFields: 'Verbeter de gemarkeerde velden.',
      firstRun: 'Het werk wordt van de bedrijfsserver gehaald', firstRunDone: 'Het werk is opgehaald.',
      noServer: 'De bedrijfsserver is niet bereikbaar. Met wat hier is opgeslagen kan worden gewerkt; de rest komt met de volgende verbinding.',
      lost: 'Het programma achter deze pagina antwoordt niet. Start het opnieuw en laad de pagina opnieuw; opgeslagen werk gaat niet verloren.',
      refusedCall: 'Het programma achter deze pagina weigerde de aanroep: {0}. Laad de pagina via het adres dat het heeft getoond.',
      fault: '{0} eindigde met een fout: {1}', invalid: '{0} werd niet begrepen: {1}',

      confirmDelete: 'Dit record verwijderen?',
      confirmDeleteText: '{0} wordt van deze computer verwijderd. Dit kan niet ongedaan worden gemaakt.',
      confirmDiscard: 'Wijzigingen verwerpen?', confirmDiscardText: 'Het formulier bevat wijzigingen die niet zijn opgeslagen.',
      yesDelete: 'Verwijderen', yesDiscard: 'Verwerpen', no: 'Annuleren',
      synchronise: 'Synchroniseren', goOnline: 'Online werken', goOffline: 'Offline werken',
      step_send: 'Wijzigingen verzenden', step_report: 'Antwoord opslaan', step_download: 'Orders ophalen', step_masterData: 'Stamgegevens ophalen',
      syncNever: 'Nog nooit gesynchroniseerd', syncJustNow: 'Zojuist gesynchroniseerd', syncAgo: '{0} geleden gesynchroniseerd', syncFor: '{0} (sinds {1})',
      spanMinutes: '{0} min.', spanHours: '{0} uur', spanDays: '{0} dagen', syncWaiting: 'wachtende wijzigingen: {0}', syncNoneWaiting: 'niets wacht',
      syncUnanswered: 'een zending is nog zonder antwoord, records daarin: {0}', syncInterrupted: 'een zending is onderbroken voordat ze wegging',
      syncOther: 'een ander venster is aan het synchroniseren', syncSentOpen: 'verzonden, maar zonder antwoord: {0}', syncChanges: 'Ontvangen wijzigingen: {0}.',
      syncElsewhere: 'Een ander venster is aan het synchroniseren. Wacht tot het klaar is.',
      syncCancelled: 'Geannuleerd. Wat al gedaan is, blijft; de rest komt met de volgende synchronisatie.',
      syncNotSent: 'De verbinding is verbroken. Uw wijzigingen blijven hier en gaan bij de volgende synchronisatie ongewijzigd opnieuw weg.',
      syncNoServer: 'De bedrijfsserver is niet bereikbaar. Er is niets gewijzigd; probeer het later opnieuw.',
      syncServerSaid: 'De bedrijfsserver antwoordde met status {0}: {1}', syncServerStatus: 'De bedrijfsserver antwoordde met status {0}.',
      syncStaysHere: 'Uw wijzigingen blijven hier en gaan bij de volgende synchronisatie ongewijzigd opnieuw weg. Meld het op kantoor als het zo blijft.',
      syncUnchanged: 'Er is niets gewijzigd; probeer het later opnieuw en meld het op kantoor als het zo blijft.',
      syncNoReport: 'Het antwoord op uw wijzigingen is niet leesbaar, dus gelden ze niet als verzonden. Ze blijven hier en gaan bij de volgende synchronisatie ongewijzigd opnieuw weg. Vraagt dit netwerk om aanmelding, meld u dan eerst aan.',
      syncForeign: 'Wat kwam, is niet wat is gevraagd of maar een deel daarvan. Er is niets gewijzigd; probeer het opnieuw. Vraagt dit netwerk om aanmelding, meld u dan eerst aan.',
      syncCancelling: 'Wordt afgebroken; wat begonnen is, wordt afgemaakt.',
      syncCancelledSent: 'Afgebroken. De server heeft uw wijzigingen misschien al. Ze blijven hier en gaan bij de volgende synchronisatie ongewijzigd opnieuw weg.',
      syncSilent: 'De server zwijgt al {0} s. U kunt wachten of afbreken; er gaat niets verloren.',
      syncUp: '{1} KiB verzonden, records daarin: {0}', syncDown: '{0} KiB ontvangen', syncTaking: '{0} KiB ontvangen, records daarin: {1}. Ze worden opgeslagen.',
      syncAgain: 'Een eerdere zending zonder antwoord gaat eerst opnieuw weg.', syncAnswered: 'Het antwoord was er al.',
      syncNothing: 'Er was niets te verzenden.', syncSent: 'Verzonden records: {0}.', syncReported: '{0} aangenomen, {1} geweigerd.',
      syncMasterFailed: 'De stamgegevens konden niet worden opgeslagen: {0}. Wijzigingen en orders zijn klaar; meld het op kantoor als het zo blijft.',
      syncNoDatabase: 'Op deze computer staat geen database.',

      syncUploadRefused: 'een zending is geweigerd',
      syncUnkept: 'een zending staat alleen in dit venster, sluit het niet',
      noStorage: 'deze browser bewaart geen invoer die niet is opgeslagen',
      journalDamaged: 'De aantekening van de laatste synchronisatie is niet leesbaar en is opzijgezet. Was een zending onderweg, controleer dan wat is verzonden; de tekst staat in het bestand Upload.xml.',
      syncRefused: 'De server zal dezelfde zending opnieuw weigeren, en daarvoor wordt niets nieuws verzonden. Bewaar haar als de server wordt hersteld; verwerp haar om de records zelf te verbeteren.',
      syncRefusedKept: 'De zending blijft hier en gaat bij de volgende synchronisatie opnieuw weg.',
      syncKeep: 'Bewaren',
      syncSaveCopy: 'Kopie opslaan',
      syncDrop: 'Zending verwerpen',
      confirmDrop: 'De geweigerde zending verwerpen?',
      confirmDropText: 'De records blijven op deze computer zoals ze zijn en staan bij de geweigerde. Elk gaat opnieuw weg zodra u het opslaat.',
      syncDropped: 'De geweigerde zending is verworpen. De records staan bij de geweigerde.',
      syncNoRoom: 'Er is geen ruimte om de zending te bewaren terwijl ze onderweg is. Als dan de verbinding breekt, weet alleen dit venster wat is verzonden.',
      syncDoNotSend: 'Niet verzenden',
      syncSendAnyway: 'Toch verzenden',
      syncNothingDone: 'Er is niets verzonden. Uw wijzigingen zijn hier opgeslagen en wachten.',

      refusedBecause: 'De server heeft dit record geweigerd',
      refusedAdvice: 'Verbeter het en sla het op, of verzend het ongewijzigd opnieuw: het gaat met de volgende synchronisatie weg.',
      sendAgain: 'Opnieuw verzenden',
      discardRecord: 'Verwerpen',
      goesOutAgain: 'Het record gaat met de volgende synchronisatie opnieuw weg.',
      confirmRefusal: 'Dit record verwerpen?',
      confirmRefusalLocal: 'Het is op deze computer gemaakt. Het wordt hier verwijderd met alles wat eronder staat. Dit kan niet ongedaan worden gemaakt.',
      confirmRefusalServer: 'Het wordt van deze computer verwijderd met alles wat eronder staat, uw wijzigingen inbegrepen. De volgende synchronisatie haalt het record zoals de server het heeft, als de server het nog uitgeeft.',
      refusalDiscarded: 'Verworpen.',

      settings: 'Instellingen',
      databaseNow: 'De stamgegevens komen uit de database',
      databaseNone: 'geen',
      databaseName: 'Naam van een andere database in de map met stamgegevens',
      databaseUse: 'Gebruiken',
      databaseChosen: 'De stamgegevens komen nu uit "{0}".',
      databaseMissing: '"{0}" is gekozen, maar die database staat niet in de map met stamgegevens of is niet leesbaar.',
      archiveName: 'Naam van een geleverd archief met stamgegevens',
      archiveStart: 'Uitpakken',
      badName: 'Schrijf de naam van een bestand, zonder mappen.',
      archiveStarted: '"{0}" is gestart en pakt zich uit.',
      archiveStartedUnseen: '"{0}" is gevraagd zich uit te pakken. Ontbreekt het, dan zegt een eigen venster dat.',

      order: 'Order {0}', activity: 'Activiteit {0}', line: 'Regel {0}',
      draftFound: 'Invoer van {0} is niet opgeslagen.', draftTake: 'Herstellen', draftDrop: 'Verwerpen'
    }
  };

  var language = 'en';
  var locale = 'en';

  /** The text of a key in the page's language, in English where that lacks it. */
  Tandril.text = function (key) {
    var values = Array.prototype.slice.call(arguments, 1);
    var pattern = TEXTS[language][key] || TEXTS.en[key] || key;
    return pattern.replace(/\{(\d)\}/g, function (whole, index) {
      return values[index] === undefined ? '' : String(values[index]);
    });
  };

  function languageOf(tag) {
    return String(tag).toLowerCase().split('-')[0];
  }

  /** Takes the first of the wanted languages that the page knows. */
  Tandril.chooseLanguage = function (wanted) {
    var known = wanted.filter(function (tag) { return TEXTS.hasOwnProperty(languageOf(tag)); });
    locale = known[0] || 'en';
    language = languageOf(locale);
    return language;
  };

  /** The language with its region, such as "de-AT", for dates and numbers in the page's own words. */
  Tandril.locale = function () { return locale; };

  Tandril.TEXTS = TEXTS;
}(typeof window === 'undefined' ? global : window));
