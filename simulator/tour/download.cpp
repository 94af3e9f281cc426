#include "download.h"

#include "dictpmplugin/dictionarieslistmodel.h"
#include "dictpmplugin/dictpmcontroller.h"
#include "step_log.h"
#include "wait.h"

namespace tessaly::tour {

using dictionary::DictionariesListModel;
using dictionary::DictPMController;

void enterDownloadMode() {
    DictionariesListModel& model = *DictionariesListModel::instance();
    bool failed = false;
    const auto connection = QObject::connect(&model, &DictionariesListModel::toDownloadModFailed, &model,
                                             [&failed] { failed = true; });
    model.refreshData();
    model.toDownloadMode();
    waitUntil([&] { return failed || model.isDownloadMode(); }, QStringLiteral("download mode"));
    QObject::disconnect(connection);
    require(!failed, QStringLiteral("there is nothing new to download, or no catalogue"));
}

std::vector<int> markDictionaries(int count) {
    DictionariesListModel& model = *DictionariesListModel::instance();
    std::vector<int> rows;
    for (int row = 0; row < model.getCount(); ++row) {
        const bool isEnglish = model.getLanguageFrom(row, true) == u"en";
        rows.insert(isEnglish && (rows.empty() || model.getLanguageFrom(rows.front(), true) != u"en")
                        ? rows.begin()
                        : rows.end(),
                    row);
    }
    require(int(rows.size()) >= count,
            QStringLiteral("only %1 left to download; --fresh starts over").arg(rows.size()));
    rows.resize(std::size_t(count));
    std::vector<int> ids;
    for (const int row : rows) {
        model.toggleSelected(row);
        ids.push_back(model.idPair(row).serverId());
    }
    require(model.selectedCount() == count, QStringLiteral("the marks don't count up"));
    return ids;
}

Download::Download() {
    connect(DictPMController::instance(), &DictPMController::syncFinished, this, [this](bool success) {
        m_ended = true;
        m_success = success;
    });
}

void Download::start() {
    DictPMController::instance()->downloadPackageProcess();
}

void Download::requireEnd(bool success) {
    waitUntil([this] { return m_ended; }, QStringLiteral("the end of the download"), 60000);
    require(m_success == success, success ? QStringLiteral("it failed with error %1, state %2")
                                                .arg(DictPMController::instance()->errorType())
                                                .arg(DictPMController::instance()->syncState())
                                          : QStringLiteral("it succeeded"));
}

void Download::waitForState(int state) {
    waitUntil([state] { return DictPMController::instance()->syncState() == state; },
              QStringLiteral("state %1").arg(state), 60000);
}

} // namespace tessaly::tour
