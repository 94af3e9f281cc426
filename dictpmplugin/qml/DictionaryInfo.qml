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
}
