#include "packages/dictionary_converter.h"
#include "simulator/fixture/seen_items.h"
#include "simulator/fixture/test_device.h"
#include "simulator/window/device_switches.h"
#include "simulator/window/paper_screen.h"
#include "simulator/window/reader_text.h"
#include "simulator/window/window.h"
#include "simulator/window/word_lookup.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <dictionaries/dictionary_file.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

using namespace tessaly;
using namespace tessaly::simulator;

/// The reader in the simulator's window, with real dictionaries as the server makes them.
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
    void install(const QString& name, const QString& source, const QString& language) const {
        server::DictionaryRecord record;
        record.name = name + u" Dictionary"_qs;
        record.languageFrom = language;
        record.indexPath = u"/usr/share/dictd/freedict-%1.index"_qs.arg(source);
        const QString packed = m_device.path("/packed");
        const QString package = m_device.path("/package.zip");
        server::convertDictionary(record, packed, {});
        server::ConvertedDictionary converted(packed);
        server::ZipWriter writer(package);
        writer.addCompressed(name + u".tsdict"_qs, converted.content(), converted.data());
        writer.commit();
        const QString folder = m_device.path("/mnt/ext1/system/dictionaries");
        QCOMPARE(QProcess::execute(u"bsdtar"_qs, {u"-xf"_qs, package, u"-C"_qs, folder}), 0);
    }

    QQuickItem* screen() const { return m_window->findChild<QQuickItem*>(u"deviceScreen"_qs); }
    /// What is to be seen with this text, or its beginning.
    QQuickItem* shown(const QString& text, const QQuickItem* in = nullptr) const {
        return findSeen(in ? *in : *screen(),
                        [&](const QQuickItem&, const QString& said) { return said.startsWith(text); });
    }
    void tapAt(const QPointF& place) { QTest::mouseClick(m_window, Qt::LeftButton, {}, place.toPoint()); }
    void tap(const QQuickItem* item) {
        QVERIFY(item);
        tapAt(centreOf(*item));
    }
    void tapWord(const QString& text) {
        for (const SeenWord& word : seenWords(*screen())) {
            if (word.text == text)
                return tapAt(word.centre);
        }
        QFAIL(qUtf8Printable(text));
    }
    void press(std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(m_window, key);
    }
    void open(const QString& profile) {
        m_switches->set(u"profile"_qs, profile);
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_window = loadWindow(*m_engine, *m_switches);
        QVERIFY(m_window);
        m_window->resize(m_window->width(), 1100); // room for all switches
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        QTRY_VERIFY(shown(u"Dictionaries"_qs) && !seenWords(*screen()).isEmpty());
    }

private Q_SLOTS:
    void initTestCase() {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        install(u"English-French"_qs, u"eng-fra"_qs, u"en"_qs);
        install(u"Czech-English"_qs, u"ces-eng"_qs, u"cs"_qs);
        QFile broken(m_device.path("/mnt/ext1/system/dictionaries/Broken.tsdict"));
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write(QByteArray(5000, 'x')) == 5000);
        m_switches = std::make_unique<DeviceSwitches>(m_device, [this] { ++m_powerCuts; });
    }
    void init() {
        choose(u"English-French"_qs);
        ReaderText().open(0);
    }
    void cleanup() {
        m_engine.reset();
        m_window = nullptr;
    }

    void looksUp_data() {
        QTest::addColumn<QString>("dictionary");
        QTest::addColumn<QString>("outcome"); // word: the entry's beginning; the row's name is the text
        const auto row = [](const char* text, const char* outcome,
                            const char* dictionary = "English-French") {
            QTest::newRow(text) << QString::fromUtf8(dictionary) << QString::fromUtf8(outcome);
        };
        row("“House,”", "Found House: house /haus/\nmaison");
        row("house", "Found house: house /haus/\nmaison", "English-French.tsdict");
        row("time’s", "Found time: time /taim/\n1. fois");
        row("l’house", "Found house: ");
        row("well-house", "Found well: ");
        row("s\u030cvy\u0301carsko", "Found švýcarsko: Švýcarsko", "Czech-English");
        row("ŠVÝCAR\u00adSKO.", "Found ŠVÝCARSKO: Švýcarsko", "Czech-English");
        row("—", "NoDictionary : "); // as it was at the start
        row("a'); DROP TABLE entries; --", "NoEntry a'); DROP TABLE entries: ");
        row("none", "NoDictionary none: ", "");
        row("deleted", "DictionaryMissing deleted: ", "Gone");
        row("damaged", "DictionaryBroken damaged: ", "Broken");
    }
    void looksUp() {
        QFETCH(const QString, dictionary);
        QFETCH(const QString, outcome);
        WordLookup lookup;
        choose(dictionary); // after the object has read the setting
        lookup.lookUp(QString::fromUtf8(QTest::currentDataTag()));
        const QString got =
            QString::fromLatin1(QMetaEnum::fromType<WordLookup::Outcome>().valueToKey(lookup.outcome())) +
            u' ' + lookup.word() + u": "_qs + lookup.entry();
        QCOMPARE(got.left(outcome.size()), outcome);
        QTRY_COMPARE(lookup.dictionary(), dictionary);
    }

    void aDictionaryDescribesItself() {
        const auto about =
            dictionary::open("/mnt/ext1/system/dictionaries/Czech-English.tsdict").getRight().metadata();
        QCOMPARE(about->title + about->languageFrom->stringify('_'),
                 std::string("Czech-English Dictionarycs"));
    }

    void fingers() {
        open(u"6-touch-hd"_qs);
        tapWord(u"on"_qs);
        QTRY_VERIFY(shown(u"on /"_qs));
        press({Qt::Key_Escape});
        choose(u"Gone"_qs);
        tapWord(u"on"_qs);
        QTRY_VERIFY(shown(u"The dictionary “Gone” is no longer on this device."_qs));
        press({Qt::Key_Escape});
        tap(shown(u"›"_qs));
        QTRY_VERIFY(shown(u"Page 2 of"_qs));
    }

    void keys() {
        open(u"6-keys"_qs);
        tapWord(u"truth"_qs); // does nothing
        tap(shown(u"Dictionaries"_qs));
        press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}); // from the title by way of the author
        QTRY_VERIFY(shown(u"This dictionary has no entry for “truth”."_qs));
        press({Qt::Key_Escape});
        tap(shown(u"Page +"_qs, m_window->contentItem()));
        QTRY_VERIFY(!shown(u"This dictionary"_qs) && shown(u"Page 2 of"_qs));
        press({Qt::Key_Left}); // before the page's first word is the last of the page before
        QTRY_VERIFY(shown(u"Page 1 of"_qs));
        press({Qt::Key_PageDown, Qt::Key_Up, Qt::Key_Left, Qt::Key_Return});
        QTRY_VERIFY(shown(u"Rotkäppchen"_qs));
        press({Qt::Key_Down, Qt::Key_Return});
        QTRY_VERIFY(shown(u"Rotkäppchen"_qs) && !shown(u"Anna Karenina"_qs));
    }

    void electronicPaper() {
        open(u"6-touch"_qs);
        m_window->resize(1170, 1136); // the screen is drawn at its own size
        auto* const paper = m_window->findChild<PaperScreen*>();
        const auto picture = [](QQuickItem* item) {
            const auto grab = item->grabToImage(item->size().toSize());
            QSignalSpy(grab.data(), &QQuickItemGrabResult::ready).wait();
            return grab->image().convertToFormat(QImage::Format_Grayscale8);
        };
        const auto isDrawn = [&] { return picture(paper) == picture(screen()); };
        tap(shown(u"Electronic paper"_qs, m_window->contentItem()));
        QTRY_VERIFY(paper->updates() == 1 && paper->area() == 1 && isDrawn());

        QElapsedTimer timer;
        timer.start();
        tap(shown(u"›"_qs));
        QTRY_VERIFY(paper->updates() > 0 && shown(u"Page 2 of"_qs));
        QTRY_VERIFY(isDrawn());
        QVERIFY(timer.elapsed() >= 250);
        QVERIFY(paper->updates() <= 2 && paper->area() < 1);

        paper->setFast(true);
        tap(shown(u"‹"_qs));
        QTRY_VERIFY(paper->updates() > 0 && shown(u"Page 1 of"_qs));
        const auto isGrey = [](uchar shade) { return shade != 0 && shade != 255; };
        const auto greys = [&] {
            const QImage text = picture(paper).copy(0, 200, 756, 500);
            return std::count_if(text.constBits(), text.constBits() + text.sizeInBytes(), isGrey);
        };
        QTRY_COMPARE(greys(), 0);
        QVERIFY(!isDrawn());
        const int updates = paper->updates();
        paper->setFast(false);
        QCOMPARE(paper->updates(), updates + 1);
        QCOMPARE(m_window->grabWindow().pixelColor(centreOf(*paper).toPoint()), Qt::black); // the flash
        QTRY_VERIFY(isDrawn() && paper->area() > 1);
    }

    void switches() {
        namespace state = vellum::state;
        open(u"6-touch"_qs);
        QQuickItem* const panel = m_window->contentItem()->childItems().constLast();
        const auto press = [this, panel](const char* text) { tap(shown(QString::fromLatin1(text), panel)); };
        const auto serverDelay = [this] {
            return m_device.server().status().value(u"switches")[u"delay_ms"].toInt(-1);
        };
        for (const char* const text : {"Network in reach", "20 s", "Storage full", "Debug mode", "Runs"})
            press(text);
        QVERIFY(!state::isNetworkReachable() && state::connectDelayMs() == 20000);
        QVERIFY(state::secureFreeBytes() >= 0 && state::isDebugMode());
        QCOMPARE(serverDelay(), 0);
        press("Slow");
        QVERIFY(serverDelay() > 0);
        press("de");
        QTRY_VERIFY(shown(u"Wörterbücher"_qs));
        press("Kill the installer");
        QVERIFY(shown(u"The next installer will be killed."_qs, panel));
        press("Lose power");
        QCOMPARE(m_powerCuts, 1);
        press("6 inch, keys only");
        QTRY_VERIFY(shown(u"Back"_qs, m_window->contentItem()) && !shown(u"›"_qs));
        for (const char* const text : {"Network in reach", "Storage full", "Debug mode", "Runs"})
            press(text);
        state::setNetState(2); // by another process
        QTRY_VERIFY(shown(u"The device is connected."_qs, panel));
    }

    void theAgentSpeaks() {
        namespace state = vellum::state;
        for (const auto& [profile, language, message] :
             {std::tuple(u"6-touch"_qs, u"en"_qs, u"No network in reach"_qs),
              {u"6-touch-hd"_qs, u"de"_qs, u"Kein Netzwerk in Reichweite"_qs},
              {u"6-keys"_qs, u"fr"_qs, u"Aucun réseau à portée"_qs},
              {u"6-keys"_qs, u"ru"_qs, u"Нет доступной сети"_qs}}) {
            m_switches->set(u"language"_qs, u"en"_qs);
            open(profile);
            m_switches->set(u"language"_qs, language);
            state::setNetworkNotice(state::NetworkNotice::NoNetwork); // by another process
            QTRY_VERIFY(shown(message));
            const QQuickItem* const focused = m_window->activeFocusItem();
            if (profile == u"6-keys")
                press({Qt::Key_Return}); // would look the marked word up
            else
                tap(shown(message));
            QTRY_VERIFY(!shown(message));
            QCOMPARE(m_window->activeFocusItem(), focused);
            QCOMPARE(state::networkNotice(), state::NetworkNotice::None);
        }
    }
};

QTEST_MAIN(ReadingTest)
#include "reading_test.moc"
