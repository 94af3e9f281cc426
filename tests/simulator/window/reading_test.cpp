#include "catalogue/dictionary_record.h"
#include "packages/dictionary_converter.h"
#include "simulator/fixture/test_device.h"
#include "simulator/window/device_switches.h"
#include "simulator/window/reader_text.h"
#include "simulator/window/window.h"
#include "simulator/window/word_lookup.h"

#include <QFile>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QTest>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

using namespace tessaly;
using namespace tessaly::simulator;

/// The reader in the simulator's window, with a real dictionary. Pictures are kept in TESSALY_PICTURES, if
/// that is set, for somebody to look at.
class ReadingTest : public QObject {
    Q_OBJECT

    fixture::TestDevice m_device;
    std::unique_ptr<DeviceSwitches> m_switches;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow* m_window = nullptr;
    int m_powerCuts = 0;

    static void choose(const QString& dictionary) {
        vl_config* const settings = OpenConfig("/mnt/ext1/system/config/global.cfg", 1);
        WriteString(settings, "dictionary", qUtf8Printable(dictionary));
        QVERIFY(SaveConfig(settings));
        CloseConfig(settings);
    }
    QString dictionaryPath(const QString& name) const {
        return m_device.path("/mnt/ext1/system/dictionaries/") + name + u".tsdict"_qs;
    }

    QQuickItem* screen() const { return m_window->findChild<QQuickItem*>(u"deviceScreen"_qs); }
    /// What is to be seen with this text, or its beginning.
    QQuickItem* shown(const QString& text, QQuickItem* in = nullptr) const {
        for (QQuickItem* const item : (in ? in : screen())->childItems()) {
            if (!item->isVisible())
                continue;
            if (item->property("text").toString().startsWith(text))
                return item;
            if (QQuickItem* const found = shown(text, item))
                return found;
        }
        return nullptr;
    }
    void tap(QQuickItem* item) {
        QVERIFY(item);
        QTest::mouseClick(m_window, Qt::LeftButton, {},
                          item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint());
    }
    void press(std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(m_window, key);
    }
    void open(const QString& profile) {
        m_switches->setProfile(profile);
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_window = loadWindow(*m_engine, *m_switches);
        QVERIFY(m_window);
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        QTRY_COMPARE(screen()->size().toSize(), m_switches->screen());
        QTRY_VERIFY(shown(u"Dictionaries"_qs));
    }
    QImage picture(const QString& name) {
        const auto result = screen()->grabToImage(m_switches->screen());
        bool isReady = false;
        connect(result.data(), &QQuickItemGrabResult::ready, this, [&isReady] { isReady = true; });
        (void)QTest::qWaitFor([&isReady] { return isReady; });
        const QString folder = qEnvironmentVariable("TESSALY_PICTURES");
        if (!folder.isEmpty()) {
            result->saveToFile(folder + u'/' + name + u".png"_qs);
            m_window->grabWindow().save(folder + u'/' + name + u"-window.png"_qs);
        }
        return result->image();
    }

private Q_SLOTS:
    void initTestCase() {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        server::DictionaryRecord record;
        record.name = u"English-French FreeDict Dictionary"_qs;
        record.languageFrom = u"en"_qs;
        record.indexPath = u"/usr/share/dictd/freedict-eng-fra.index"_qs;
        QVERIFY(QFile::copy(server::convertDictionary(record, m_device.root(), {}),
                            dictionaryPath(u"English-French"_qs)));
        QFile broken(dictionaryPath(u"Broken"_qs));
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write(QByteArray(5000, 'x')) == 5000);
        m_switches = std::make_unique<DeviceSwitches>(m_device, [this] { ++m_powerCuts; });
    }
    void init() {
        choose(u"English-French"_qs);
        m_switches->setLanguage(u"en"_qs);
        ReaderText().open(0);
    }
    void cleanup() {
        m_engine.reset();
        m_window = nullptr;
    }

    void looksUp_data() {
        QTest::addColumn<QString>("dictionary");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("outcome"); // word: the entry's beginning
        const QString good = u"English-French"_qs;
        QTest::newRow("punctuation, capital")
            << good << u"“House,”"_qs << u"Found House: house /haus/\nmaison"_qs;
        QTest::newRow("by file name")
            << u"English-French.tsdict"_qs << u"house"_qs << u"Found house: house /haus/\nmaison"_qs;
        QTest::newRow("part") << good << u"time’s"_qs << u"Found time: time /taim/\n1. fois"_qs;
        QTest::newRow("unknown") << good << u"Netherfield."_qs << u"NoEntry Netherfield: "_qs;
        QTest::newRow("only punctuation")
            << good << u"—"_qs << u"NoDictionary : "_qs; // as it was at the start
        QTest::newRow("hostile") << good << u"a'); DROP TABLE entries; --"_qs
                                 << u"NoEntry a'); DROP TABLE entries: "_qs;
        QTest::newRow("none chosen") << QString() << u"house"_qs << u"NoDictionary house: "_qs;
        QTest::newRow("deleted") << u"Gone"_qs << u"house"_qs << u"DictionaryMissing house: "_qs;
        QTest::newRow("damaged") << u"Broken"_qs << u"house"_qs << u"DictionaryBroken house: "_qs;
    }
    void looksUp() {
        QFETCH(const QString, dictionary);
        QFETCH(const QString, text);
        QFETCH(const QString, outcome);
        WordLookup lookup;
        choose(dictionary); // after the object has read the setting
        lookup.lookUp(text);
        const QString got =
            QString::fromLatin1(QMetaEnum::fromType<WordLookup::Outcome>().valueToKey(lookup.outcome())) +
            u' ' + lookup.word() + u": "_qs + lookup.entry();
        QCOMPARE(got.left(outcome.size()), outcome);
        QTRY_COMPARE(lookup.dictionary(), dictionary);
    }

    void keepsThePlace() {
        ReaderText text;
        text.setArea({400, 400});
        text.setLetterSize(30);
        text.open(3);
        QVERIFY(text.turn(1) && !text.words().isEmpty());
        while (text.turn(1))
            continue;
        QCOMPARE(text.page(), text.pageCount() - 1);
        ReaderText again;
        again.setArea({400, 400});
        again.setLetterSize(30);
        QCOMPARE(again.text(), 3);
        QCOMPARE(again.page(), text.page());
        again.setLetterSize(10); // fewer pages
        QCOMPARE(again.page(), again.pageCount() - 1);
    }

    void fingers_data() {
        QTest::addColumn<QString>("profile");
        QTest::newRow("touch") << u"6-touch"_qs;
        QTest::newRow("touch-hd") << u"6-touch-hd"_qs;
    }
    void fingers() {
        QFETCH(const QString, profile);
        open(profile);
        QCOMPARE(picture(profile).size(), m_switches->screen());
        tap(shown(u"single"_qs));
        QTRY_VERIFY(shown(u"single /"_qs));
        picture(profile + u"-entry"_qs);
        press({Qt::Key_Escape});
        QTRY_VERIFY(!shown(u"single /"_qs));
        tap(shown(u"on"_qs)); // has a long entry
        QTRY_VERIFY(shown(u"on /"_qs));
        picture(profile + u"-long-entry"_qs);
        const QQuickItem* const text = shown(u"on /"_qs);
        const qreal top = text->mapToScene({}).y();
        press({Qt::Key_PageDown});
        QTRY_VERIFY(text->mapToScene({}).y() < top);
        press({Qt::Key_Escape});
        tap(shown(u"›"_qs));
        QTRY_VERIFY(shown(u"Page 2 of"_qs));
        tap(shown(u"Pride and"_qs));
        QTRY_VERIFY(shown(u"Анна Каренина"_qs));
        picture(profile + u"-texts"_qs);
        tap(shown(u"Анна Каренина"_qs));
        QTRY_VERIFY(shown(u"счастливые"_qs) && shown(u"Page 1 of"_qs));
        tap(shown(u"счастливые"_qs));
        QTRY_VERIFY(shown(u"This dictionary has no entry for “счастливые”."_qs));
    }

    void keys() {
        open(u"6-keys"_qs);
        picture(u"6-keys"_qs);
        tap(shown(u"truth"_qs)); // does nothing
        tap(shown(u"Dictionaries"_qs));
        press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Right,
               Qt::Key_Return}); // the title, the author, "is a truth"
        picture(u"6-keys-entry"_qs);
        QTRY_VERIFY(shown(u"This dictionary has no entry for “truth”."_qs));
        press({Qt::Key_Escape});
        tap(shown(u"Page +"_qs, m_window->contentItem()));
        QTRY_VERIFY(!shown(u"This dictionary"_qs) && shown(u"Page 2 of"_qs));
        press({Qt::Key_Left}); // before the page's first word is the last of the page before
        QTRY_VERIFY(shown(u"Page 1 of"_qs));
        press({Qt::Key_PageDown, Qt::Key_Up, Qt::Key_Left, Qt::Key_Return});
        QTRY_VERIFY(shown(u"Rotkäppchen"_qs));
        picture(u"6-keys-texts"_qs);
        press({Qt::Key_Down, Qt::Key_Return});
        QTRY_VERIFY(shown(u"Es"_qs) && !shown(u"Anna Karenina"_qs));
    }

    void backLeavesTheDictionaries() {
        open(u"6-keys"_qs);
        press({Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Return});
        QTRY_VERIFY(screen()->property("dictionariesOpen").toBool());
        QTest::qWait(300);
        picture(u"6-keys-dictionaries"_qs);
        press({Qt::Key_Escape});
        QTRY_VERIFY(!screen()->property("dictionariesOpen").toBool());
        press({Qt::Key_Down, Qt::Key_PageDown}); // the page has the focus
        QTRY_VERIFY(shown(u"Page 2 of"_qs));
    }

    void switches() {
        namespace state = vellum::state;
        open(u"6-touch"_qs);
        QQuickItem* const panel = m_window->contentItem()->childItems().constLast();
        const auto press = [this, panel](const char* text) { tap(shown(QString::fromLatin1(text), panel)); };
        press("Network in reach");
        QVERIFY(!state::isNetworkReachable());
        press("20 s");
        QCOMPARE(state::connectDelayMs(), 20000);
        press("Storage full");
        QVERIFY(state::secureFreeBytes() >= 0);
        press("Debug mode");
        QVERIFY(state::isDebugMode());
        press("Runs");
        QCOMPARE(m_device.server().status().value(u"switches")[u"delay_ms"].toInt(-1), 0);
        press("Slow");
        QVERIFY(m_device.server().status().value(u"switches")[u"delay_ms"].toInt() > 0);
        press("de");
        QTRY_VERIFY(shown(u"Wörterbücher"_qs));
        press("Kill the installer");
        QVERIFY(shown(u"No installer is running."_qs, panel));
        press("Lose power");
        QCOMPARE(m_powerCuts, 1);
        press("6 inch, keys only");
        QTRY_VERIFY(shown(u"Back"_qs, m_window->contentItem()) && !shown(u"›"_qs));
        for (const char* const text : {"Network in reach", "Storage full", "Debug mode", "Slow", "Runs"})
            press(text);
        QVERIFY(state::isNetworkReachable() && state::secureFreeBytes() < 0 && !state::isDebugMode());
        state::setNetState(2); // by another process
        QTRY_VERIFY(shown(u"The device is connected."_qs, panel));
    }

    void messages_data() {
        QTest::addColumn<QString>("dictionary");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("message");
        QTest::newRow("none-en") << QString() << u"en"_qs << u"No dictionary has been chosen yet."_qs;
        QTest::newRow("gone-de") << u"Gone"_qs << u"de"_qs
                                 << u"Das Wörterbuch „Gone“ ist nicht mehr auf diesem Gerät."_qs;
        QTest::newRow("broken-fr") << u"Broken"_qs << u"fr"_qs
                                   << u"Le dictionnaire «\u00a0Broken\u00a0» est endommagé"_qs;
        QTest::newRow("none-ru") << QString() << u"ru"_qs << u"Словарь ещё не выбран."_qs;
    }
    void messages() {
        QFETCH(const QString, dictionary);
        QFETCH(const QString, language);
        QFETCH(const QString, message);
        open(u"6-touch"_qs);
        choose(dictionary); // both while it is shown
        m_switches->setLanguage(language);
        tap(shown(u"universally"_qs));
        QTRY_VERIFY(shown(message));
        QTest::qWait(50);
        picture(u"message-"_qs + QString::fromLatin1(QTest::currentDataTag()));
    }
};

QTEST_MAIN(ReadingTest)
#include "reading_test.moc"
