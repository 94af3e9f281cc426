#include <QTest>
#include <QtEndian>
#include <cstring>
#include <dictionaries/dictionary_file.h>
#include <dictionaries/vl_api.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <tests/support/files.h>
#include <vellum/vellum.h>

using namespace tessaly;

namespace {

const QString file = QStringLiteral("/mnt/ext1/system/dictionaries/d.tsdict");
const QByteArray entries = "CREATE TABLE entries (headword, definition, folded);";
const QByteArray tables = "CREATE TABLE metadata (key, value);" + entries;

} // namespace

class DictionaryFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QFile::remove(path()); }

    void oddMetadata() {
        make(tables +
             "INSERT INTO metadata VALUES ('title', x'41FF42'), ('language_from', 12), ('provider', NULL), "
             "('language_to', ''), ('version', 'four'), ('set', 1.5), ('thumbnail', 'file:///etc/passwd'), "
             "('description', hex(zeroblob(5000)))");
        const auto odd = open().getRight().metadata();
        QCOMPARE(odd->title + odd->provider + odd->dictSet + odd->thumbnail, std::string("A\uFFFDB1.5"));
        QVERIFY(!odd->languageFrom && !odd->languageTo && odd->version == 0);
        QCOMPARE(odd->description, std::string(3999, '0') + "…");
        QCOMPARE(odd->category, std::string("d")); // the file's name tells it from others
        make(tables);
        QVERIFY(!open().getRight().metadata());
    }

    void refused() {
        const QByteArray manyViews = "PRAGMA writable_schema = 1; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                                     "SELECT i + 1 FROM n WHERE "
                                     "i < 1000) INSERT INTO sqlite_schema SELECT 'view', 'v' || i, 'v' || i, "
                                     "0, 'CREATE VIEW v' || i || "
                                     "' AS SELECT * FROM v' || (i - 1) FROM n";
        const QByteArray numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n ";
        for (const QByteArray& statements :
             {QByteArray("CREATE TABLE other (a)"), entries,
              QByteArray("CREATE TABLE metadata (k, v); CREATE TABLE entries (a)"),
              entries + "CREATE VIEW metadata AS " + numbers +
                  ") SELECT i AS key, i AS value FROM n WHERE i < 0",
              entries + "CREATE VIRTUAL TABLE metadata USING fts5(key, value)",
              entries + "CREATE VIRTUAL TABLE metadata USING fts5(key, value); PRAGMA writable_schema = 1;"
                        "UPDATE sqlite_schema SET rootpage = 2 WHERE name = 'metadata'",
              entries + "CREATE TABLE metadata (key, value AS (hex(zeroblob(400000))))", tables + manyViews,
              tables + "CREATE TABLE other (a DEFAULT '" + QByteArray(1000, 'x') + "')",
              tables + "INSERT INTO metadata VALUES ('title', zeroblob(2000000))",
              tables + "INSERT INTO metadata " + numbers +
                  "WHERE i < 12) SELECT 'title', zeroblob(100000) FROM n"}) {
            make(statements);
            QVERIFY2(open().isLeft() && !OpenDictionary("d"), statements);
        }
    }

    /// Pages that share one leaf with a long text in it: a search through the table would take years.
    void lookupIsBounded() {
        make("PRAGMA page_size = 512;" + tables +
             "INSERT INTO entries VALUES (hex(zeroblob(450000)), '', '');"
             "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
             "INSERT INTO entries SELECT 'w' || i, hex(zeroblob(200)), 'w' FROM n");
        QByteArray bytes = readFile(path());
        const auto page = [&](qsizetype number) { return bytes.data() + (number - 1) * 512; };
        // Where an inner page has the numbers of the pages below it: in its head, and in each cell.
        const auto below = [&](quint32 number) {
            QList<char*> places{page(number) + 8};
            for (qsizetype i = 0; i < qFromBigEndian<quint16>(page(number) + 3); ++i)
                places << page(number) + qFromBigEndian<quint16>(page(number) + 12 + 2 * i);
            return places;
        };
        QList<quint32> levels{3}; // the root
        for (const char* const place : below(3))
            levels << qFromBigEndian<quint32>(place);
        const quint32 leaf = qFromBigEndian<quint32>(below(levels[2])[1]);
        const QByteArray inner(page(levels[3]), 512);
        levels = levels.mid(0, 6) << leaf;
        for (int i = 0; i + 1 < levels.size(); ++i) {
            std::memcpy(page(levels[i]), inner.constData(), 512);
            for (char* const place : below(levels[i]))
                qToBigEndian(levels[i + 1], place);
        }
        writeFile(path(), bytes);
        LogWatch log;
        QVERIFY(OpenDictionary("d") && open().getRight().lookup("word").empty());
        QVERIFY(log.takeUnexpected().value(0).endsWith(u"cannot be read: interrupted"));
    }

    /// Keys of an index that claim to be nearly as long as the file, most of which is a hole: a search reads
    /// one for each of its comparisons, all within one step.
    void keysAreBounded() {
        make("PRAGMA page_size = 512;" + tables + "CREATE INDEX i ON entries (headword)");
        const auto number = [](quint32 value) {
            QByteArray bytes(4, '\0');
            qToBigEndian(value, bytes.data());
            return bytes;
        };
        // Each leads back to this page, has 224 MiB, and goes on in a page that follows itself.
        const QByteArray cell = number(4) + QByteArray("\xF0\x80\x80\0\6\xFF\xFF\xFF\x7F\1", 10) +
                                QByteArray(33, 'a') + number(5);
        QByteArray root = QByteArray("\2\0\0\0\x8\0\x68\0", 8) + number(4);
        for (quint32 i = 0; i < 8; ++i)
            root += number(0x68 + 51 * i).last(2);
        QByteArray bytes = readFile(path()).replace(28, 4, number(1 << 19)).left(1536);
        bytes += root.leftJustified(0x68, '\0') + cell.repeated(8) + number(5);
        writeFile(path(), bytes);
        QVERIFY(QFile::resize(path(), 256 << 20));
        LogWatch log;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(open().getRight().lookup("word").empty());
        QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(log.takeUnexpected().value(0).endsWith(u"cannot be read: out of memory"));
    }

    void noDatabases() {
        QVERIFY(open().isLeft());
        make(tables + "INSERT INTO entries VALUES (hex(zeroblob(9000)), '', '')");
        const QByteArray whole = readFile(path());
        for (const QByteArray& content : {whole.left(whole.size() / 2), QByteArray(),
                                          QByteArray("no database"), QByteArray(70'000, '\0')}) {
            writeFile(path(), content);
            QVERIFY(open().isLeft() && !OpenDictionary("d"));
        }
        QVERIFY(QFile::remove(path()));
        QCOMPARE(::mkfifo(qUtf8Printable(path()), 0600), 0);
        QVERIFY(open().isLeft());
    }

    void readingLeavesNothingBeside() {
        make("PRAGMA journal_mode = WAL;" + tables + "INSERT INTO entries VALUES ('a', 'A', 'a')");
        const auto opened = open();
        QCOMPARE(opened.getRight().lookup("a").size(), std::size_t(1));
        QVERIFY(OpenDictionary("d") && OpenDictionary("d.tsdict"));
        QCOMPARE(QFileInfo(path()).dir().entryList(QDir::Files), QStringList(u"d.tsdict"_qs));
    }

    void findsFilesOfTheRightEnding() {
        LogWatch log;
        for (const char* name :
             {"/ebrmain/dictionaries/b.tsdict", "/ebrmain/dictionaries/a [1].tsdict",
              "/ebrmain/dictionaries/c.TSDICT", "/ebrmain/dictionaries/.tsdict",
              "/mnt/ext1/system/dictionaries/folder.tsdict/d.tsdict",
              "/mnt/ext1/system/dictionaries/b.tsdict", "/mnt/ext2/system/dictionaries/Ελληνικά.tsdict"})
            writeFile(m_device.path(name), "not looked at");
        QFile::link(u"nowhere"_qs, m_device.path("/mnt/ext1/system/dictionaries/dangling.tsdict"));
        const auto found = vl_api::enumDictionaries();
        QStringList paths;
        for (const vl_api::Dictionary& dictionary : found)
            paths << QString::fromStdString(dictionary.absolutePath());
        QCOMPARE(paths.join(u'|'), u"/ebrmain/dictionaries/a [1].tsdict|/ebrmain/dictionaries/b.tsdict|"
                                   "/mnt/ext2/system/dictionaries/Ελληνικά.tsdict"_qs);
        QVERIFY(found.findByName("a [1]") == found.findByFileName("a [1].tsdict"));
        QVERIFY(!found.findByName("folder") && !found.findByFileName("a [1]"));
        // Of two with one name that of the first folder stays.
        const QStringList warnings = log.takeUnexpected();
        QVERIFY(warnings.size() == 1 && warnings[0].contains(u"/mnt/ext1/system/dictionaries/b.tsdict"_qs));
    }

private:
    [[nodiscard]] QString path() const { return m_device.path(qUtf8Printable(file)); }

    void make(const QByteArray& statements) const {
        QFile::remove(path());
        writeFile(path(), {});
        sqlite3* database = nullptr;
        QCOMPARE(sqlite3_open(qUtf8Printable(path()), &database), SQLITE_OK);
        QCOMPARE(sqlite3_exec(database, statements.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }

    [[nodiscard]] static Either<Error, dictionary::DictionaryFile> open() {
        return dictionary::open(file.toStdString());
    }

    fixture::TestDevice m_device;
};

QTEST_GUILESS_MAIN(DictionaryFileTest)
#include "dictionary_file_test.moc"
