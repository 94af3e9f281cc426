#pragma once

#include "dictionary_files.h"
#include "signal_recorder.h"

#include <dictpmplugin/db/dictionarydao.h>
#include <dictpmplugin/dictionarieslistmodel.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>

#include <QAbstractItemModelTester>
#include <QTest>
#include <optional>

namespace tessaly::tests {

/// A list model on a device of its own; what it tells and logs is watched.
class ListUnderTest {
    struct Disconnect {
        ~Disconnect() { QSqlDatabase::removeDatabase(catalogueConnection); }
    };

public:
    ListUnderTest() { watch.allow(u"No display text for language"_qs); /* once a thread only */ }

    fixture::TestDevice device;
    LogWatch watch;
    Disconnect disconnect; ///< when the model is gone
    dictionary::DictionariesListModel model;
    std::optional<QAbstractItemModelTester> tester{std::in_place, &model,
                                                   QAbstractItemModelTester::FailureReportingMode::QtTest};
    SignalRecorder recorder{&model};

    QString fileOf(const QString& name) const { return device.path(dictionaryFolder) + name + u".tsdict"_qs; }
    void install(const QString& name, const QMap<QString, QString>& metadata = languages("en", "")) const {
        writeDictionary(fileOf(name), metadata);
    }
    static void catalogue(const std::vector<dictionary::DictionaryInfo>& records) {
        const dictionary::DictionaryDAO dao(QSqlDatabase::database(catalogueConnection));
        QVERIFY(dao.addMultiple(records).isRight());
    }
    /// The signals since the last call, with short names for those that come often.
    QString story() {
        QString text = recorder.take().join(u' ');
        for (const auto& [name, abbreviation] : {std::pair("modelAboutToBeReset()", "["),
                                                 {"modelReset()", "]"},
                                                 {"choosedDictionaryTitleChanged", "title"},
                                                 {"selectedDictionaryIndexChanged", "chosen"},
                                                 {"isConnectingToNetChanged", "connecting"},
                                                 {"isDownloadModeChanged", "downloadMode"}})
            text.replace(QLatin1String(name), QLatin1String(abbreviation));
        return text;
    }
};

} // namespace tessaly::tests
