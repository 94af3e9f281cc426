// tessaly-fuzz TARGET [libFuzzer's options and files]: each target takes one input as something that came
// from outside, and ends the process if more comes of it than may.

#include <QCoreApplication>
#include <QThreadPool>
#include <base/log_sink.h>
#include <base/staging.h>
#include <clocale>
#include <controls/services/morphology_data.h>
#include <dictionaries/catalogue_parser.h>
#include <dictionaries/dictionary_file.h>
#include <dictionaries/morph_explorer.h>
#include <dictionaries/routes.h>
#include <install.h>
#include <manifest.h>
#include <simulator/fixture/loopback_server.h>
#include <simulator/fixture/test_device.h>
#include <status_file.h>
#include <tests/support/files.h>
#include <utilities/sync_downloader.h>
#include <utilities/url.h>
#include <vellum/clock.h>
#include <vellum/device_state.h>
#include <vellum/dictionary_files.h>

using namespace tessaly;
namespace Routes = dictionary::Routes;

namespace {
constexpr auto downloads = "/mnt/ext1/Downloads";
constexpr auto hunspell = "/mnt/ext1/system/hunspell";
std::optional<fixture::TestDevice> device;

void require(bool isSo, const char* what) {
    if (!isSo)
        qFatal("broken: %s", what);
}

void write(const char* path, const std::string& content) {
    writeFile(device->path(path), QByteArray::fromStdString(content));
}

/// Removes what lies in a folder of the device, and says what that was.
QStringList emptied(const char* path) {
    QDir folder(device->path(path));
    const QStringList names = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    folder.removeRecursively();
    folder.mkpath(QStringLiteral("."));
    return names;
}

template<class Answer>
void checkCatalogue(const Answer& answer) {
    if (answer.isLeft())
        return;
    require(answer.getRight().size() <= dictionary::mostCatalogueRecords, "number of records");
    for (const auto& record : answer.getRight()) {
        require(record.serverId > 0 && vellum::isDictionaryFileName(record.file), "number and file");
        require(record.thumbnail.empty() || utilities::isWebUrl(record.thumbnail), "a cover's address");
        require(record.name.size() <= 900 && record.description.size() <= 12'000, "texts to be borne");
    }
}

/// The input is a whole response, after a digit that says to which request.
void fuzzRoutes(const std::string& input) {
    static QByteArray answer;
    static const fixture::LoopbackServer server([](QTcpSocket& client) {
        QObject::connect(&client, &QTcpSocket::readyRead, &client, [&client] {
            client.write(answer);
            client.disconnectFromHost();
        });
    });
    static const std::string url = "http://127.0.0.1:" + std::to_string(server.port());
    answer = QByteArray::fromStdString(input).mid(1);
    const char route = answer.toLower().contains("location") ? '\0' : input.c_str()[0]; // leads nowhere else
    if (route == '0') {
        checkCatalogue(Routes::listDictionaries(url));
        checkCatalogue(Routes::listDictionaries(url));
    } else if (route == '1') {
        static_cast<void>(Routes::requestDictionariesDownload("1,2", url));
        static_cast<void>(Routes::sendSuccessInstall("1", url));
    } else if (route == '2') { // what is announced then meets this very response
        const auto address = Routes::getDictionariesDownloadUrl(1, url);
        const std::string package = address.isRight() ? address.getRight() : url;
        utilities::SyncDownloader downloader(downloads);
        downloader.Download(url + package.substr(std::min(package.find('#'), package.size())), "/p", 0, "");
        int total = 0;
        int done = 0;
        downloader.GetProgress(nullptr, nullptr, &total, &done);
        require(utilities::isWebUrl(package) && done >= 0 && done <= total, "address and progress");
    } else if (route == '3') {
        dictionary::MorphExplorer explorer(QString::fromLatin1(hunspell));
        device->setServerUrl(QString::fromStdString(url));
        const auto* const german = explorer.urlMap()->at(QStringLiteral("de_AT"));
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        const std::string found = german->value().toString().toStdString();
        require(found.empty() || utilities::isWebUrl(found), "morphology data's address");
    }
}

void fuzzManifest(const std::string& input) {
    for (const auto& file : installer::parseManifest(input).files)
        require(vellum::isDictionaryFileName(file.name) && file.size >= 0, "a file's name and size");
}

void fuzzPackage(const std::string& input) {
    write("/mnt/ext1/Downloads/p", input);
    const auto atItsEnd = qScopeGuard([] {
        const QStringList names = emptied("/mnt/ext1/system/dictionaries");
        require(names.empty() == (std::uncaught_exceptions() > 0), "all or nothing");
        for (const QString& name : names)
            require(vellum::isDictionaryFileName(name.toStdString()), "a file's name");
        require(emptied("/mnt/secure/tspk").empty() && emptied(downloads).size() == 1, "nothing elsewhere");
    });
    installer::StatusFile status;
    installer::install("/p", status);
}

void fuzzDictionary(const std::string& input) {
    write("/mnt/ext1/system/dictionaries/d.tsdict", input);
    const auto file = dictionary::open("/mnt/ext1/system/dictionaries/d.tsdict");
    require(file.isLeft() || file.getRight().lookup("word").size() <= 1000, "number of entries");
    require(emptied("/mnt/ext1/system/dictionaries").size() == 1, "nothing beside it");
}

void fuzzMorphology(const std::string& input) {
    write("/mnt/ext1/Downloads/de.zip", input);
    try {
        const base::Staging staging(device->path(hunspell).toStdString(), services::stagingPrefix);
        services::unpackLanguage(device->path("/mnt/ext1/Downloads/de.zip").toStdString(), "de",
                                 staging.path());
        services::placeLanguage(staging.path(), "de");
    } catch (const std::exception&) {
    }
    const QString names = emptied(hunspell).join(u' ');
    require(names.isEmpty() || names == QStringLiteral("de.aff de.dic"), "both files or none");
    require(emptied(downloads).size() == 1, "nothing elsewhere");
}

void fuzzConfiguration(const std::string& input) {
    write("/var/device_state.cfg", input);
    static_cast<void>(vellum::state::secureFreeBytes() + vellum::state::netState());
    const std::string screen = vellum::state::screen();
    const std::string language = input.substr(0, 9999);
    vellum::state::setLanguage(language);
    require(vellum::state::language() == language && vellum::state::screen() == screen, "what was written");
}

void fuzzCatalogue(const std::string& input) {
    checkCatalogue(dictionary::parseCatalogue(input));
}

const std::map<std::string, void (*)(const std::string&)> targets = {
    {"catalogue", fuzzCatalogue}, {"configuration", fuzzConfiguration}, {"dictionary", fuzzDictionary},
    {"manifest", fuzzManifest},   {"morphology", fuzzMorphology},       {"package", fuzzPackage},
    {"routes", fuzzRoutes}};
void (*target)(const std::string&) = nullptr;

} // namespace
/// Takes the target's name off the command line.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    static const QCoreApplication application(*count, *arguments);
    target = targets.at(application.arguments().value(1).toStdString());
    std::swap((*arguments)[0], (*arguments)[1]);
    ++*arguments;
    --*count;
    device.emplace();
    device->setOnline(true);
    vellum::state::setSecureFreeBytes(32'000'000);
    vellum::clock::setSpeed(1e6);
    log::setLogFile("/dev/null");
    std::setlocale(LC_CTYPE, "C.UTF-8");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
    try {
        target(std::string(data, size));
    } catch (const installer::Failure&) { // says what is wrong with it
    }
    return 0;
}
