import QtQml 2.12

// The texts of one dictionary to show.
QtObject {
    property string title: ""
    property string languageFrom: ""
    property string languageTo: ""
    property string languageIsoFrom: ""
    property string languageIsoTo: ""
    property string publishDate: ""
    property string issuer: ""
    property string subject: ""
    property string coverUrl: ""
    property string description: ""

    // What tells its row from others: database numbers change whenever the catalogue is fetched, and what isn't in the
    // catalogue has no number of the server's.
    property string identity: ""

    function identityOf(model, row): string {
        const languages = model.getLanguageFrom(row, true) + "|" + model.getLanguageTo(row, true)
        return model.idPair(row).serverId + "|" + languages + "|" + model.getTitle(row)
    }

    // Takes over a row of the list model.
    function read(model, row) {
        identity = identityOf(model, row)
        languageFrom = model.getLanguageFrom(row)
        languageTo = model.getLanguageTo(row)
        languageIsoFrom = model.getLanguageFrom(row, true)
        languageIsoTo = model.getLanguageTo(row, true)
        issuer = model.getProvider(row)
        publishDate = model.getPublishDate(row)
        subject = model.getCategory(row)
        description = model.getDescription(row)
        coverUrl = model.getCoverUrl(row)
        title = languageFrom === "" || languageTo === "" ? ""
              : "%1 ⇾ %2 (%3)".arg(languageFrom).arg(languageTo).arg(subject)
    }
}
