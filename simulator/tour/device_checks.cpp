#include "device_checks.h"

#include "simulator/fixture/test_device.h"
#include "step_log.h"

#include <dictionaries/dictionary_file.h>
#include <dictionaries/routes.h>
#include <dictionaries/vl_api.h>
#include <utilities/cfg_wrapper.h>

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>

namespace tessaly::tour {

namespace {

constexpr const char* folders[] = {"/ebrmain/dictionaries",         "/mnt/secure/dictionaries",
                                   "/mnt/ext1/system/dictionaries", "/mnt/ext2/system/dictionaries",
                                   "/mnt/ext1/Downloads",           "/mnt/secure/tspk",
                                   "/mnt/ext1/system/config"};

QString checksum(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? QString::fromLatin1(hash.result().toHex())
                                                                 : QStringLiteral("unreadable");
}

std::vector<dictionary::DictionaryInfo> offered() {
    auto list = dictionary::Routes::listDictionaries(dictionary::default_base_url());
    require(list.isRight(), QStringLiteral("the server lists no dictionaries"));
    return list.getRight();
}

} // namespace

std::string currentDictionary() {
    return utilities::CfgWrapper("/mnt/ext1/system/config/global.cfg", 0)
        .readIfExists<std::string>("dictionary")
        .value_or("");
}

int installedDictionaries() {
    const auto dictionaries = vl_api::enumDictionaries();
    for (const auto& entry : dictionaries)
        require(dictionary::open(entry.absolutePath()).isRight(),
                QStringLiteral("%1 doesn't open").arg(QString::fromStdString(entry.absolutePath())));
    return int(dictionaries.size());
}

QJsonArray numbersOffered() {
    QJsonArray numbers;
    for (const auto& record : offered())
        numbers << record.serverId;
    return numbers;
}

int dictionariesToDownload() {
    return int(dictionary::DictionaryInfo::subtractLists(offered(), vl_api::enumDictionaries()).size());
}

DeviceSnapshot::DeviceSnapshot(const fixture::TestDevice& device) {
    for (const char* const folder : folders) {
        QDirIterator files(device.path(folder), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            m_files.insert(path, files.fileInfo().isFile() ? checksum(path) : QStringLiteral("folder"));
        }
    }
}

void DeviceSnapshot::requireSameNow(const fixture::TestDevice& device) const {
    const auto now = DeviceSnapshot(device).m_files;
    for (auto file = m_files.begin(); file != m_files.end(); ++file)
        require(now.value(file.key()) == file.value(), QStringLiteral("lost or changed: ") + file.key());
    for (auto file = now.begin(); file != now.end(); ++file)
        require(m_files.contains(file.key()), QStringLiteral("left behind: ") + file.key());
}

} // namespace tessaly::tour
