<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>keys</name>
    <message>
        <source>@AddNewDictionaries</source>
        <translation>Wörterbücher hinzufügen</translation>
    </message>
    <message>
        <source>@AreYouSureYouWanDeletDictionary?</source>
        <translation>Wörterbuch %1 ⇾ %2 löschen?</translation>
    </message>
    <message>
        <source>@Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>@Busy</source>
        <translation>Bitte warten</translation>
    </message>
    <message>
        <source>@by</source>
        <translation>von</translation>
    </message>
    <message>
        <source>@Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>@CantDownloadDictionariesServerIsRespondingTooLong</source>
        <translation>Die Wörterbücher können noch nicht geladen werden: Der Server antwortet zu langsam.</translation>
    </message>
    <message>
        <source>@Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>@ContinueDownloading</source>
        <translation>Weiter laden</translation>
    </message>
    <message>
        <source>@DatePublished</source>
        <translation>Erschienen</translation>
    </message>
    <message>
        <source>@Delete</source>
        <translation>Löschen</translation>
    </message>
    <message numerus="yes">
        <source>@DictionariesHaveBeenDownloaded</source>
        <translation>
            <numerusform>%1 Wörterbuch geladen</numerusform>
            <numerusform>%1 Wörterbücher geladen</numerusform>
        </translation>
    </message>
    <message>
        <source>@DictionaryPackage</source>
        <translation>Wörterbuchpaket</translation>
    </message>
    <message>
        <source>@DictionaryWasDeleted</source>
        <translation>Das Wörterbuch %1 ⇾ %2 wurde gelöscht.</translation>
    </message>
    <message>
        <source>@Download</source>
        <translation>Laden</translation>
    </message>
    <message>
        <source>@DownloadFailedCheckYourNetworkConnectionAndTryAgain</source>
        <translation>Download fehlgeschlagen. Prüfen Sie die Netzwerkverbindung und versuchen Sie es erneut.</translation>
    </message>
    <message numerus="yes">
        <source>@DownloadingDictionaries</source>
        <translation>
            <numerusform>%1 Wörterbuch wird geladen</numerusform>
            <numerusform>%1 Wörterbücher werden geladen</numerusform>
        </translation>
    </message>
    <message>
        <source>@DownloadMorphology</source>
        <translation>Morphologie %s laden</translation>
    </message>
    <message>
        <source>@DoYouWantToStopTheDownload</source>
        <translation>Download abbrechen?</translation>
    </message>
    <message>
        <source>@Info</source>
        <translation>Informationen</translation>
    </message>
    <message>
        <source>@InstalledMorphology</source>
        <translation>%s (installiert)</translation>
    </message>
    <message>
        <source>@InstallingMorphology</source>
        <translation>Morphologie %s wird installiert</translation>
    </message>
    <message>
        <source>@InsufficientStorageSpace</source>
        <translation>Nicht genügend Speicherplatz. Geben Sie Speicher frei und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>@Languages</source>
        <translation>Sprachen</translation>
    </message>
    <message>
        <source>@LongPress</source>
        <translation>Gedrückt halten</translation>
    </message>
    <message>
        <source>@Morphology</source>
        <translation>Morphologie</translation>
    </message>
    <message>
        <source>@MorphologyHasBeenInstalled</source>
        <translation>Morphologie %s wurde installiert</translation>
    </message>
    <message>
        <source>@No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>@NoInformationAboutDictionary</source>
        <translation>Keine Informationen zu diesem Wörterbuch</translation>
    </message>
    <message>
        <source>@NoInstalledDictionaries</source>
        <translation>Keine Wörterbücher installiert</translation>
    </message>
    <message>
        <source>@NoNewDictionaries</source>
        <translation>Es gibt keine neuen Wörterbücher.</translation>
    </message>
    <message>
        <source>@OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>@Other</source>
        <translation>Andere</translation>
    </message>
    <message>
        <source>@Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>@Scroll</source>
        <translation>Blättern</translation>
    </message>
    <message>
        <source>@ScrollDown</source>
        <translation>Nach unten blättern</translation>
    </message>
    <message>
        <source>@ScrollUp</source>
        <translation>Nach oben blättern</translation>
    </message>
    <message>
        <source>@SelectDictionariesToDownload</source>
        <translation>Wörterbücher zum Laden auswählen</translation>
    </message>
    <message>
        <source>@SelectDictionary</source>
        <translation>Wörterbuch auswählen</translation>
    </message>
    <message>
        <source>@Stop</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>@SuccessfullyDownloaded</source>
        <translation>Download abgeschlossen</translation>
    </message>
    <message>
        <source>@Terminate</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>@ThereIsAnIssueWithDownloadingSelectedDictionaries</source>
        <translation>Die ausgewählten Wörterbücher konnten nicht geladen werden. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>@Unavailable</source>
        <translation>nicht verfügbar</translation>
    </message>
    <message>
        <source>@Wait</source>
        <translation>Warten</translation>
    </message>
    <message>
        <source>@Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>@AgentConnecting</source>
        <translation>Verbindung wird hergestellt …</translation>
    </message>
    <message>
        <source>@AgentNoNetwork</source>
        <translation>Kein Netzwerk in Reichweite</translation>
    </message>
    <message>
        <source>@ReaderChooseDictionary</source>
        <translation>Wörterbuch auswählen</translation>
    </message>
    <message>
        <source>@ReaderDictionaries</source>
        <translation>Wörterbücher</translation>
    </message>
    <message>
        <source>@ReaderDictionaryBroken</source>
        <translation>Das Wörterbuch „%1“ ist beschädigt und kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>@ReaderDictionaryMissing</source>
        <translation>Das Wörterbuch „%1“ ist nicht mehr auf diesem Gerät.</translation>
    </message>
    <message>
        <source>@ReaderNextPage</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>@ReaderNoDictionary</source>
        <translation>Es wurde noch kein Wörterbuch ausgewählt.</translation>
    </message>
    <message>
        <source>@ReaderNoDictionaryShort</source>
        <translation>Kein Wörterbuch ausgewählt</translation>
    </message>
    <message>
        <source>@ReaderNoEntry</source>
        <translation>Dieses Wörterbuch hat keinen Eintrag für „%1“.</translation>
    </message>
    <message>
        <source>@ReaderPage</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>@ReaderPreviousPage</source>
        <translation>Vorige Seite</translation>
    </message>
    <message>
        <source>@ReaderTexts</source>
        <translation>Texte</translation>
    </message>
</context>
</TS>
