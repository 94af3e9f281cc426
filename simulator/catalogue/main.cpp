// Brings a device online, synchronises its catalogue with the dictionary server, and prints what its database
// then holds.

#include "dictpmplugin/LangUtils.h"
#include "dictpmplugin/data_manager.h"
#include "dictpmplugin/db/dbholder.h"
#include "simulator/fixture/test_device.h"

#include <vellum/device_state.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QScopeGuard>
#include <cstdio>
#include <map>
#include <stdexcept>

using namespace tessaly;
using dictionary::DataManager;
using dictionary::DictionaryInfo;

namespace {

void print(const std::vector<DictionaryInfo>& catalogue) {
    std::map<std::string, std::vector<const DictionaryInfo*>> byLanguage;
    for (const DictionaryInfo& info : catalogue)
        byLanguage[dictionary::langutils::displayTextOr(info.languageFrom, "Other")].push_back(&info);
    for (const auto& [language, records] : byLanguage) {
        std::printf("\n%s\n", language.c_str());
        for (const DictionaryInfo* const info : records)
            std::printf("  %4d  %s (%s)\n", info->serverId, info->name.c_str(), info->provider.c_str());
    }
    std::printf("\n%zu dictionaries in the catalogue\n", catalogue.size());
}

const char* explain(DataManager::Error error) {
    switch (error) {
    case DataManager::NetworkNotAvailableError:
        return "no network is reachable, so the catalogue could not be synchronised";
    case DataManager::NetworkError:
        return "the dictionary server does not answer, so the catalogue could not be synchronised";
    case DataManager::DatabaseFileNotExist:
    case DataManager::DatabaseError:
        return "the stored catalogue can not be read";
    case DataManager::UndefinedError:
        break;
    }
    return "the dictionary server gave no catalogue, so it could not be synchronised";
}

/// 0 only if the catalogue is the server's of now.
int run() {
    const auto holder = dictionary::DBHolder::newDefault();
    DataManager manager(holder);
    const auto failure = manager.synchronizeMetaData();
    if (failure)
        std::printf("Offline: %s. What is stored:\n", explain(*failure));
    const auto stored = manager.getDictionariesFromDB();
    if (stored.isLeft())
        throw std::runtime_error(explain(stored.getLeft()));
    print(stored.getRight());
    return failure ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Synchronises the catalogue of a simulated device and prints what is stored."));
    const QCommandLineOption helpOption = parser.addHelpOption();
    const QCommandLineOption rootOption(QStringLiteral("root"), QStringLiteral("Folder of the device."),
                                        QStringLiteral("DIR"));
    const QCommandLineOption offlineOption(QStringLiteral("offline"),
                                           QStringLiteral("No network is reachable, this time."));
    parser.addOptions({rootOption, offlineOption});
    const bool isUnderstood = parser.parse(application.arguments());
    if (isUnderstood && parser.isSet(helpOption))
        parser.showHelp();
    if (!isUnderstood || !parser.isSet(rootOption) || !parser.positionalArguments().isEmpty()) {
        if (!isUnderstood)
            std::fprintf(stderr, "%s\n", qUtf8Printable(parser.errorText()));
        std::fprintf(stderr, "usage: tessaly-catalogue --root DIR [--offline]\n");
        return 2;
    }
    try {
        fixture::TestDevice device(parser.value(rootOption));
        device.keepLog();
        const auto backAgain = qScopeGuard([wasReachable = vellum::state::isNetworkReachable()] {
            vellum::state::setNetworkReachable(wasReachable);
        });
        if (parser.isSet(offlineOption))
            vellum::state::setNetworkReachable(false);
        device.startServer();
        const int status = run();
        std::printf("Database: %s\n", qUtf8Printable(device.path("/mnt/ext1/system/tsdicts/tsdicts.db")));
        return status;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\nthe device's log: %s/var/log/device.log\n", error.what(),
                     qUtf8Printable(parser.value(rootOption)));
        return 1;
    }
}
