<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>keys</name>
    <message>
        <source>@AddNewDictionaries</source>
        <translation>Add dictionaries</translation>
    </message>
    <message>
        <source>@AreYouSureYouWanDeletDictionary?</source>
        <translation>Delete the dictionary %1 ⇾ %2?</translation>
    </message>
    <message>
        <source>@Back</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>@Busy</source>
        <translation>Busy</translation>
    </message>
    <message>
        <source>@by</source>
        <translation>by</translation>
    </message>
    <message>
        <source>@Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>@CantDownloadDictionariesServerIsRespondingTooLong</source>
        <translation>The dictionaries can’t be downloaded yet: the server is taking too long to respond.</translation>
    </message>
    <message>
        <source>@Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>@ContinueDownloading</source>
        <translation>Continue</translation>
    </message>
    <message>
        <source>@DatePublished</source>
        <translation>Published</translation>
    </message>
    <message>
        <source>@Delete</source>
        <translation>Delete</translation>
    </message>
    <message numerus="yes">
        <source>@DictionariesHaveBeenDownloaded</source>
        <translation>
            <numerusform>%1 dictionary downloaded</numerusform>
            <numerusform>%1 dictionaries downloaded</numerusform>
        </translation>
    </message>
    <message>
        <source>@DictionaryPackage</source>
        <translation>Dictionary package</translation>
    </message>
    <message>
        <source>@DictionaryWasDeleted</source>
        <translation>The dictionary %1 ⇾ %2 was deleted.</translation>
    </message>
    <message>
        <source>@Download</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>@DownloadFailedCheckYourNetworkConnectionAndTryAgain</source>
        <translation>Download failed. Check the network connection and try again.</translation>
    </message>
    <message numerus="yes">
        <source>@DownloadingDictionaries</source>
        <translation>
            <numerusform>Downloading %1 dictionary</numerusform>
            <numerusform>Downloading %1 dictionaries</numerusform>
        </translation>
    </message>
    <message>
        <source>@DownloadMorphology</source>
        <translation>Download %s morphology</translation>
    </message>
    <message>
        <source>@DoYouWantToStopTheDownload</source>
        <translation>Stop the download?</translation>
    </message>
    <message>
        <source>@Info</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>@InstalledMorphology</source>
        <translation>%s (installed)</translation>
    </message>
    <message>
        <source>@InstallingMorphology</source>
        <translation>Installing %s morphology</translation>
    </message>
    <message>
        <source>@InsufficientStorageSpace</source>
        <translation>Not enough storage space. Free up some space and try again.</translation>
    </message>
    <message>
        <source>@Languages</source>
        <translation>Languages</translation>
    </message>
    <message>
        <source>@LongPress</source>
        <translation>Press and hold</translation>
    </message>
    <message>
        <source>@Morphology</source>
        <translation>Morphology</translation>
    </message>
    <message>
        <source>@MorphologyHasBeenInstalled</source>
        <translation>Finished installing %s morphology</translation>
    </message>
    <message>
        <source>@No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>@NoInformationAboutDictionary</source>
        <translation>No information about this dictionary</translation>
    </message>
    <message>
        <source>@NoInstalledDictionaries</source>
        <translation>No dictionaries installed</translation>
    </message>
    <message>
        <source>@NoNewDictionaries</source>
        <translation>There are no new dictionaries.</translation>
    </message>
    <message>
        <source>@OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>@Other</source>
        <translation>Other</translation>
    </message>
    <message>
        <source>@Progress</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>@Scroll</source>
        <translation>Scroll</translation>
    </message>
    <message>
        <source>@ScrollDown</source>
        <translation>Scroll down</translation>
    </message>
    <message>
        <source>@ScrollUp</source>
        <translation>Scroll up</translation>
    </message>
    <message>
        <source>@SelectDictionariesToDownload</source>
        <translation>Select dictionaries to download</translation>
    </message>
    <message>
        <source>@SelectDictionary</source>
        <translation>Select dictionary</translation>
    </message>
    <message>
        <source>@Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>@SuccessfullyDownloaded</source>
        <translation>Download complete</translation>
    </message>
    <message>
        <source>@Terminate</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>@ThereIsAnIssueWithDownloadingSelectedDictionaries</source>
        <translation>The selected dictionaries couldn’t be downloaded. Try again later.</translation>
    </message>
    <message>
        <source>@Unavailable</source>
        <translation>unavailable</translation>
    </message>
    <message>
        <source>@Wait</source>
        <translation>Wait</translation>
    </message>
    <message>
        <source>@Yes</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>@AgentConnecting</source>
        <translation>Connecting…</translation>
    </message>
    <message>
        <source>@AgentNoNetwork</source>
        <translation>No network in reach</translation>
    </message>
    <message>
        <source>@ReaderChooseDictionary</source>
        <translation>Choose a dictionary</translation>
    </message>
    <message>
        <source>@ReaderDictionaries</source>
        <translation>Dictionaries</translation>
    </message>
    <message>
        <source>@ReaderDictionaryBroken</source>
        <translation>The dictionary “%1” is damaged and cannot be read.</translation>
    </message>
    <message>
        <source>@ReaderDictionaryMissing</source>
        <translation>The dictionary “%1” is no longer on this device.</translation>
    </message>
    <message>
        <source>@ReaderNextPage</source>
        <translation>Next page</translation>
    </message>
    <message>
        <source>@ReaderNoDictionary</source>
        <translation>No dictionary has been chosen yet.</translation>
    </message>
    <message>
        <source>@ReaderNoDictionaryShort</source>
        <translation>No dictionary chosen</translation>
    </message>
    <message>
        <source>@ReaderNoEntry</source>
        <translation>This dictionary has no entry for “%1”.</translation>
    </message>
    <message>
        <source>@ReaderPage</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>@ReaderPreviousPage</source>
        <translation>Previous page</translation>
    </message>
    <message>
        <source>@ReaderTexts</source>
        <translation>Texts</translation>
    </message>
</context>
</TS>
