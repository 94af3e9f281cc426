#pragma once

// For QML's tools, which can't see what the plugin registers when it is loaded: from these declarations and
// those of the classes, the build makes the module's plugins.qmltypes. Nothing of this is compiled.

#include "data_manager.h"
#include "dictionarieslistmodel.h"
#include "dictionary_id_pair.h"
#include "dictpmcontroller.h"
#include "languageheaderinjectorproxymodel.h"

#include <qqmlregistration.h>

struct LanguageHeaderInjectorProxyModelInfo {
    Q_GADGET
    QML_FOREIGN(LanguageHeaderInjectorProxyModel)
    QML_NAMED_ELEMENT(LanguageHeaderInjectorProxyModel)
};

struct DataManagerInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::DataManager)
    QML_NAMED_ELEMENT(DataManager)
    QML_UNCREATABLE("class registered only for enums")
};

struct DictionaryIdPairInfo {
    Q_GADGET
    QML_FOREIGN(DictionaryIdPair)
    QML_ANONYMOUS
};

struct DictionariesListModelInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::DictionariesListModel)
    QML_NAMED_ELEMENT(DictionariesListModel)
    QML_SINGLETON
};

struct DictPMControllerInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::DictPMController)
    QML_NAMED_ELEMENT(DictPMController)
    QML_SINGLETON
};

struct MorphExplorerInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::MorphExplorer)
    QML_NAMED_ELEMENT(MorphExplorer)
    QML_UNCREATABLE("created from c++ (default in DictionariesListModel singleton)")
};

struct MorphFileExistanceMapInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::MorphFileExistanceMap)
    QML_NAMED_ELEMENT(MorphFileExistanceMap)
    QML_UNCREATABLE("created from c++ (call MorphExplorer::existanceMap)")
};

struct MorphUrlMapInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::MorphUrlMap)
    QML_NAMED_ELEMENT(MorphUrlMap)
    QML_UNCREATABLE("created from c++ (call MorphExplorer::urlMap)")
};

struct MorphSecretProviderInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::MorphSecretProvider)
    QML_NAMED_ELEMENT(MorphSecretProvider)
    QML_UNCREATABLE("created from c++ (call MorphExplorer::apiKeyProvider)")
};

struct MorphMapInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::MorphMap)
    QML_ANONYMOUS
};

struct MorphValueInfo {
    Q_GADGET
    QML_FOREIGN(tessaly::dictionary::MorphValue)
    QML_ANONYMOUS
};
