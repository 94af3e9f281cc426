#include "download_mode.h"

#include "LangUtils.h"
#include "data_manager.h"
#include "list_traces.h"

#include <common_utilities/log_line.h>

#include <algorithm>

namespace tessaly::dictionary {

void DownloadModeNews::setIsConnectingToNet(bool isConnectingToNet) {
    LogLine(4) << "=========================== setIsConnectingToNet: " << isConnectingToNet;
    const bool was = m_isConnectingToNet.exchange(isConnectingToNet);
    LogLine(4) << "=========================== setIsConnectingToNet was: " << was;
    if (was != isConnectingToNet)
        Q_EMIT isConnectingToNetChanged(isConnectingToNet);
}

std::optional<std::vector<DictionaryRow>> listDownloadable(DataManager& dataManager, DownloadModeNews& news) {
    news.setIsConnectingToNet(true);
    if (const auto error = dataManager.synchronizeMetaData()) {
        Q_EMIT news.dataManagerError(int(*error));
        return std::nullopt;
    }
    const auto fromNet = dataManager.getDictionariesFromNet();
    if (fromNet.isLeft()) {
        Q_EMIT news.dataManagerError(int(fromNet.getLeft()));
        return std::nullopt;
    }
    traces::fromNet(fromNet.getRight());
    const auto installed = vl_api::enumDictionaries();
    auto offered = DictionaryInfo::subtractLists(fromNet.getRight(), installed);
    traces::installedBeside(fromNet.getRight(), installed);
    if (offered.empty()) {
        Q_EMIT news.noNewDictionaries();
        return std::nullopt; // the connecting flag stays set, here and above, on purpose
    }
    news.setIsConnectingToNet(false);
    std::sort(offered.begin(), offered.end(), comesBefore);
    return DictionaryRow::vectorFromDictionaries(offered, false);
}

bool comesBefore(const DictionaryInfo& a, const DictionaryInfo& b) {
    const auto compareNames = [&](DictionaryRow::Language language) {
        return langutils::displayTextOr(a.*language, "Other")
            .compare(langutils::displayTextOr(b.*language, "Other"));
    };
    if (a.languageFrom != b.languageFrom) {
        const auto code = [](const auto& locale) { return locale ? locale->stringify('_') : std::string(); };
        const int names = compareNames(&DictionaryInfo::languageFrom);
        const int order = names != 0 ? names : code(a.languageFrom).compare(code(b.languageFrom));
        if (order != 0)
            return order < 0;
    }
    return compareNames(&DictionaryInfo::languageTo) < 0;
}

} // namespace tessaly::dictionary
