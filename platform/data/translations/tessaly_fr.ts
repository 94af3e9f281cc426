<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>keys</name>
    <message>
        <source>@AddNewDictionaries</source>
        <translation>Ajouter des dictionnaires</translation>
    </message>
    <message>
        <source>@AreYouSureYouWanDeletDictionary?</source>
        <translation>Supprimer le dictionnaire %1 ⇾ %2 ?</translation>
    </message>
    <message>
        <source>@Back</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>@Busy</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>@by</source>
        <translation>par</translation>
    </message>
    <message>
        <source>@Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>@CantDownloadDictionariesServerIsRespondingTooLong</source>
        <translation>Impossible de télécharger les dictionnaires pour le moment : le serveur met trop de temps à répondre.</translation>
    </message>
    <message>
        <source>@Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>@ContinueDownloading</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>@DatePublished</source>
        <translation>Date de publication</translation>
    </message>
    <message>
        <source>@Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message numerus="yes">
        <source>@DictionariesHaveBeenDownloaded</source>
        <translation>
            <numerusform>%1 dictionnaire téléchargé</numerusform>
            <numerusform>%1 dictionnaires téléchargés</numerusform>
        </translation>
    </message>
    <message>
        <source>@DictionaryPackage</source>
        <translation>Lot de dictionnaires</translation>
    </message>
    <message>
        <source>@DictionaryWasDeleted</source>
        <translation>Le dictionnaire %1 ⇾ %2 a été supprimé.</translation>
    </message>
    <message>
        <source>@Download</source>
        <translation>Télécharger</translation>
    </message>
    <message>
        <source>@DownloadFailedCheckYourNetworkConnectionAndTryAgain</source>
        <translation>Échec du téléchargement. Vérifiez la connexion réseau, puis réessayez.</translation>
    </message>
    <message numerus="yes">
        <source>@DownloadingDictionaries</source>
        <translation>
            <numerusform>Téléchargement de %1 dictionnaire</numerusform>
            <numerusform>Téléchargement de %1 dictionnaires</numerusform>
        </translation>
    </message>
    <message>
        <source>@DownloadMorphology</source>
        <translation>Télécharger la morphologie %s</translation>
    </message>
    <message>
        <source>@DoYouWantToStopTheDownload</source>
        <translation>Arrêter le téléchargement ?</translation>
    </message>
    <message>
        <source>@Info</source>
        <translation>Informations</translation>
    </message>
    <message>
        <source>@InstalledMorphology</source>
        <translation>%s (installée)</translation>
    </message>
    <message>
        <source>@InstallingMorphology</source>
        <translation>Installation de la morphologie %s</translation>
    </message>
    <message>
        <source>@InsufficientStorageSpace</source>
        <translation>Espace de stockage insuffisant. Libérez de l’espace, puis réessayez.</translation>
    </message>
    <message>
        <source>@Languages</source>
        <translation>Langues</translation>
    </message>
    <message>
        <source>@LongPress</source>
        <translation>Appui long</translation>
    </message>
    <message>
        <source>@Morphology</source>
        <translation>Morphologie</translation>
    </message>
    <message>
        <source>@MorphologyHasBeenInstalled</source>
        <translation>Morphologie %s installée</translation>
    </message>
    <message>
        <source>@No</source>
        <translation>Non</translation>
    </message>
    <message>
        <source>@NoInformationAboutDictionary</source>
        <translation>Aucune information sur ce dictionnaire</translation>
    </message>
    <message>
        <source>@NoInstalledDictionaries</source>
        <translation>Aucun dictionnaire installé</translation>
    </message>
    <message>
        <source>@NoNewDictionaries</source>
        <translation>Il n’y a pas de nouveaux dictionnaires.</translation>
    </message>
    <message>
        <source>@OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>@Other</source>
        <translation>Autres</translation>
    </message>
    <message>
        <source>@Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>@Scroll</source>
        <translation>Défiler</translation>
    </message>
    <message>
        <source>@ScrollDown</source>
        <translation>Défiler vers le bas</translation>
    </message>
    <message>
        <source>@ScrollUp</source>
        <translation>Défiler vers le haut</translation>
    </message>
    <message>
        <source>@SelectDictionariesToDownload</source>
        <translation>Choisir les dictionnaires à télécharger</translation>
    </message>
    <message>
        <source>@SelectDictionary</source>
        <translation>Choisir un dictionnaire</translation>
    </message>
    <message>
        <source>@Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>@SuccessfullyDownloaded</source>
        <translation>Téléchargement terminé</translation>
    </message>
    <message>
        <source>@Terminate</source>
        <translation>Interrompre</translation>
    </message>
    <message>
        <source>@ThereIsAnIssueWithDownloadingSelectedDictionaries</source>
        <translation>Impossible de télécharger les dictionnaires sélectionnés. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>@Unavailable</source>
        <translation>indisponible</translation>
    </message>
    <message>
        <source>@Wait</source>
        <translation>Attendre</translation>
    </message>
    <message>
        <source>@Yes</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>@AgentConnecting</source>
        <translation>Connexion en cours…</translation>
    </message>
    <message>
        <source>@AgentNoNetwork</source>
        <translation>Aucun réseau à portée</translation>
    </message>
    <message>
        <source>@ReaderChooseDictionary</source>
        <translation>Choisir un dictionnaire</translation>
    </message>
    <message>
        <source>@ReaderDictionaries</source>
        <translation>Dictionnaires</translation>
    </message>
    <message>
        <source>@ReaderDictionaryBroken</source>
        <translation>Le dictionnaire « %1 » est endommagé et ne peut pas être lu.</translation>
    </message>
    <message>
        <source>@ReaderDictionaryMissing</source>
        <translation>Le dictionnaire « %1 » n’est plus sur cet appareil.</translation>
    </message>
    <message>
        <source>@ReaderNextPage</source>
        <translation>Page suivante</translation>
    </message>
    <message>
        <source>@ReaderNoDictionary</source>
        <translation>Aucun dictionnaire n’a encore été choisi.</translation>
    </message>
    <message>
        <source>@ReaderNoDictionaryShort</source>
        <translation>Aucun dictionnaire choisi</translation>
    </message>
    <message>
        <source>@ReaderNoEntry</source>
        <translation>Ce dictionnaire n’a pas d’entrée pour « %1 ».</translation>
    </message>
    <message>
        <source>@ReaderPage</source>
        <translation>Page %1 sur %2</translation>
    </message>
    <message>
        <source>@ReaderPreviousPage</source>
        <translation>Page précédente</translation>
    </message>
    <message>
        <source>@ReaderTexts</source>
        <translation>Textes</translation>
    </message>
</context>
</TS>
