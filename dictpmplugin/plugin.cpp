#include "plugin.h"

#include "data_manager.h"
#include "dictionarieslistmodel.h"
#include "dictionary_id_pair.h"
#include "dictpmcontroller.h"
#include "ktype.h"
#include "languageheaderinjectorproxymodel.h"

#include <QUrl>
#include <QtQml>

using namespace tessaly::dictionary;

namespace {

constexpr int majorVersion = 1;
constexpr int minorVersion = 0;

struct Document {
    const char* typeName;
    int majorVersion;
    int minorVersion;
    const char* path; ///< in the resources
};

// Two documents are compiled in without being types, on purpose: DownloadProgress, which only the others use,
// and DictionarySectionHeader, which none of them uses (the list makes its sections from the same parts).
constexpr Document documents[] = {
    {"DictionariesListDialog", 1, 0, "qml/DictionariesListDialog.qml"},
    {"DictionaryInfo", 1, 0, "qml/DictionaryInfo.qml"},
    {"DictionaryInfoPanel", 1, 0, "qml/DictionaryInfoPanel.qml"},
    {"DictionaryInfoDialog", 1, 0, "qml/DictionaryInfoDialog.qml"},
    {"DictionaryListItem", 1, 0, "qml/DictionaryListItem.qml"},
    {"ImgBusyIndicatorTextButton", 1, 0, "qml/ImgBusyIndicatorTextButton.qml"},
    {"MorphDonwloadTile", 1, 0, "qml/MorphDonwloadTile.qml"},
    {"Controller", 1, 0, "qml/Controller.qml"},
    {"ErrorDialog", 1, 0, "qml/ErrorDialog.qml"},
};

template<class T>
void registerUncreatable(const char* uri, const char* name, const char* reason) {
    qmlRegisterUncreatableType<T>(uri, majorVersion, minorVersion, name, QString::fromLatin1(reason));
}

template<class T>
void registerUncreatable(const char* uri, const char* reason) {
    registerUncreatable<T>(uri, KType<T>().head().c_str(), reason);
}

template<class T>
void registerSingleton(const char* uri) {
    qmlRegisterSingletonType<T>(uri, majorVersion, minorVersion, T::qmlTypeName(), T::qmlInstance);
}

} // namespace

void TSDictpmPlugin::registerTypes(const char* uri) {
    qmlRegisterType<LanguageHeaderInjectorProxyModel>(
        uri, majorVersion, minorVersion, KType<LanguageHeaderInjectorProxyModel>().head().c_str());
    registerUncreatable<DataManager>(uri, "DataManager", "class registered only for enums");
    qRegisterMetaType<DictionaryIdPair>();
    registerSingleton<DictionariesListModel>(uri);
    registerSingleton<DictPMController>(uri);
    registerUncreatable<MorphExplorer>(uri, "created from c++ (default in DictionariesListModel singleton)");
    registerUncreatable<MorphFileExistanceMap>(uri, "created from c++ (call MorphExplorer::existanceMap)");
    registerUncreatable<MorphUrlMap>(uri, "created from c++ (call MorphExplorer::urlMap)");
    registerUncreatable<MorphSecretProvider>(uri, "created from c++ (call MorphExplorer::apiKeyProvider)");

    for (const Document& document : documents)
        qmlRegisterType(QUrl(QStringLiteral("qrc:/") + QLatin1String(document.path)), uri,
                        document.majorVersion, document.minorVersion, document.typeName);
}
