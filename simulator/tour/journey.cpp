#include "journey.h"

#include "dictpmplugin/dictionarieslistmodel.h"
#include "dictpmplugin/dictpmcontroller.h"
#include "download.h"
#include "simulator/fixture/test_device.h"

#include <dictionaries/dictionary_file.h>
#include <dictionaries/vl_api.h>
#include <utilities/cfg_wrapper.h>
#include <vellum/vellum.h>

#include <QJsonArray>

namespace tessaly::tour {

namespace {

using dictionary::DictionariesListModel;
using dictionary::DictPMController;

DictionariesListModel& model() {
    return *DictionariesListModel::instance();
}

std::string currentDictionary() {
    return utilities::CfgWrapper("/mnt/ext1/system/config/global.cfg", 0)
        .readIfExists<std::string>("dictionary")
        .value_or("");
}

int installedRow(int serverId) {
    model().refreshData();
    const int row = model().indexFromServerId(serverId);
    require(row >= 0, QStringLiteral("dictionary %1 isn't in the list").arg(serverId));
    return row;
}

QString lookUpWord(const vl_api::Dictionary& dictionary) {
    const auto opened = dictionary::open(dictionary.absolutePath());
    require(opened.isRight(), QStringLiteral("the file doesn't open"));
    for (const char* const word :
         {"water", "house", "eau", "Wasser", "acqua", "agua", "su", "uisce", "voda", "вода", "νερό"}) {
        const auto entries = opened.getRight().lookup(word);
        if (!entries.empty())
            return QString::fromStdString(entries.front().definition).simplified();
    }
    throw StepFailed(QStringLiteral("none of the words is in it"));
}

} // namespace

bool Journey::downloadAndRead() {
    const bool isOnline = m_log.run(QStringLiteral("device goes online and fetches the catalogue"), [] {
        enterDownloadMode();
        require(GetNetState() == 2, QStringLiteral("not connected"));
        return QStringLiteral("%1 dictionaries on offer").arg(model().getCount());
    });
    const bool isMarked = isOnline && m_log.run(QStringLiteral("two dictionaries are marked"), [this] {
        m_serverIds = markDictionaries(2);
        return model().getSelectedIds();
    });
    if (!isMarked)
        return false;
    m_log.run(QStringLiteral("their package is built, downloaded and installed"), [this] {
        Download download;
        int lastProgress = 0;
        QObject::connect(DictPMController::instance(), &DictPMController::progressChanged, &download,
                         [&lastProgress](int value) { lastProgress = std::max(lastProgress, value); });
        download.start();
        download.requireEnd(true);
        require(lastProgress == 100, QStringLiteral("progress ended at %1").arg(lastProgress));
        const auto reported = m_device.server().status().value(u"reported").toArray();
        require(!reported.isEmpty(), QStringLiteral("the server was not told"));
        return QString();
    });
    m_log.run(QStringLiteral("the first one is chosen"), [this] {
        const int row = installedRow(m_serverIds.at(0));
        model().chooseDictionary(row);
        require(model().selectedDictionaryIndex() == row, QStringLiteral("its row isn't marked"));
        return QString::fromStdString(currentDictionary());
    });
    m_log.run(QStringLiteral("a word is looked up in it"), [] {
        const auto installed = vl_api::enumDictionaries();
        const vl_api::Dictionary* const dictionary = installed.findByName(currentDictionary());
        require(dictionary, QStringLiteral("the reader's dictionary isn't installed"));
        return lookUpWord(*dictionary);
    });
    return true;
}

void Journey::removeDictionary(int serverId) {
    const auto before = vl_api::enumDictionaries().size();
    model().deleteDict(installedRow(serverId));
    require(vl_api::enumDictionaries().size() == before - 1, QStringLiteral("its file is still there"));
    require(model().indexFromServerId(serverId) < 0, QStringLiteral("it is still in the list"));
}

void Journey::deleteAgain() {
    m_log.run(QStringLiteral("the other dictionary is deleted"), [this] {
        const std::string current = currentDictionary();
        removeDictionary(m_serverIds.at(1));
        require(currentDictionary() == current, QStringLiteral("the reader's dictionary changed"));
        return QString();
    });
    m_log.run(QStringLiteral("the chosen dictionary is deleted"), [this] {
        const std::string current = currentDictionary();
        removeDictionary(m_serverIds.at(0));
        require(currentDictionary() != current, QStringLiteral("the reader still uses it"));
        return QString();
    });
}

} // namespace tessaly::tour
