#include "device_folder.h"

#include <QTest>
#include <dictionaries/vl_api.h>

using namespace tessaly;

class DictionaryEnumerationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsFilesOfTheRightEnding() {
        tests::DeviceFolder device;
        QVERIFY(vl_api::enumDictionaries().empty());
        for (const char* file :
             {"/ebrmain/dictionaries/b.tsdict", "/ebrmain/dictionaries/a [1].tsdict",
              "/ebrmain/dictionaries/c.TSDICT", "/ebrmain/dictionaries/Ελληνικά.tsdict",
              "/ebrmain/dictionaries/.tsdict", "/ebrmain/dictionaries/x.tsdict.part",
              "/mnt/ext1/system/dictionaries/folder.tsdict/d.tsdict",
              "/mnt/ext1/system/dictionaries/b.tsdict", "/mnt/ext2/system/dictionaries/d.tsdict"})
            device.write(QString::fromUtf8(file), "not looked at");
        const QString folder = device.path("/mnt/ext1/system/dictionaries/");
        QFile::link(u"nowhere"_qs, folder + u"dangling.tsdict"_qs);
        QFile::link(device.path("/ebrmain/dictionaries/b.tsdict"), folder + u"link.tsdict"_qs);

        const auto found = vl_api::enumDictionaries();
        QStringList paths;
        for (const vl_api::Dictionary& dictionary : found)
            paths << QString::fromStdString(dictionary.absolutePath());
        const QStringList expected = {
            u"/ebrmain/dictionaries/a [1].tsdict"_qs, u"/ebrmain/dictionaries/b.tsdict"_qs,
            u"/ebrmain/dictionaries/Ελληνικά.tsdict"_qs, u"/mnt/ext1/system/dictionaries/link.tsdict"_qs,
            u"/mnt/ext2/system/dictionaries/d.tsdict"_qs};
        QCOMPARE(paths, expected);
        QVERIFY(found.findByName("a [1]") &&
                found.findByName("a [1]") == found.findByFileName("a [1].tsdict"));
        QVERIFY(!found.findByName("folder") && !found.findByFileName("a [1]"));

        // Of two with one name that of the first folder stays.
        const QStringList warnings = device.log.take();
        QCOMPARE(warnings.size(), 1);
        QVERIFY(warnings[0].contains(u"/mnt/ext1/system/dictionaries/b.tsdict"_qs));
    }
};

QTEST_GUILESS_MAIN(DictionaryEnumerationTest)
#include "dictionary_enumeration_test.moc"
