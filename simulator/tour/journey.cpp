#include "journey.h"

#include "device_checks.h"
#include "simulator/fixture/test_device.h"
#include "simulator/window/reader_text.h"

#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QFile>
#include <QJsonObject>
#include <QScopeGuard>
#include <QSignalSpy>

namespace tessaly::tour {

namespace {

/// Words as long as this are likely to be in a dictionary.
constexpr qsizetype longWord = 4;

} // namespace

bool Journey::makeRoom() {
    constexpr int needed = 4; // two stay while two more are asked for
    const int missing = needed - dictionariesToDownload();
    return missing <= 0 ||
           m_log.run(QStringLiteral("what earlier runs downloaded is deleted, as far as it is needed"), [&] {
               m_hand.openDictionaries();
               const QStringList titles = m_hand.titles().mid(0, missing);
               for (const QString& title : titles)
                   deleteDictionary(title);
               m_hand.leave();
               return titles.join(QStringLiteral(", "));
           });
}

bool Journey::downloadAndRead() {
    if (!makeRoom())
        return false;
    Screen& screen = m_hand.screen();
    const bool isOpen = m_log.run(QStringLiteral("the list of dictionaries opens over the page"), [&] {
        screen.picture(QStringLiteral("page"));
        lookAtReader();
        m_hand.openDictionaries();
        screen.picture(QStringLiteral("list-before"));
        return QStringLiteral("%1 installed").arg(installedDictionaries());
    });
    const bool isMarked =
        isOpen && m_log.run(QStringLiteral("the device goes online, two dictionaries are marked"), [&] {
            connectSlowly();
            require(GetNetState() == 2, QStringLiteral("not connected"));
            screen.picture(QStringLiteral("catalogue"));
            lookAtInformation(m_hand.titles().constFirst(), QStringLiteral("information-offered"));
            m_titles = m_hand.mark(2);
            screen.picture(QStringLiteral("marked"));
            return m_titles.join(QStringLiteral(", "));
        });
    if (!isMarked)
        return false;
    m_log.run(QStringLiteral("their package is downloaded and installed"), [&] {
        download();
        return QString();
    });
    m_log.run(QStringLiteral("the downloaded dictionary is the reader's"), [&] {
        require(m_hand.isAtPage(), QStringLiteral("the interface is still open"));
        require(!currentDictionary().empty(), QStringLiteral("none is chosen"));
        return QString::fromStdString(currentDictionary());
    });
    m_log.run(QStringLiteral("one is chosen in the list, then the other"), [&] {
        m_hand.openDictionaries();
        screen.picture(QStringLiteral("list"));
        choose(m_titles.at(1));
        const std::string second = currentDictionary();
        m_hand.openDictionaries();
        choose(m_titles.at(0));
        require(currentDictionary() != second, QStringLiteral("the reader's dictionary stays the same"));
        return QString::fromStdString(second + ", " + currentDictionary());
    });
    m_log.run(QStringLiteral("a word is looked up in it"), [&] {
        lookUpWord();
        return QString();
    });
    return true;
}

void Journey::lookAtReader() {
    Screen& screen = m_hand.screen();
    const QString title = simulator::ReaderText().title();
    if (!m_hand.isTouch())
        screen.moveTo(text("@ReaderDictionaries"), Qt::Key_Up);
    m_hand.press(title);
    screen.waitFor(text("@ReaderTexts"));
    screen.picture(QStringLiteral("texts"));
    screen.press(Qt::Key_Back);
    if (!m_hand.isTouch()) { // the header has kept its focus there
        screen.moveTo(title, Qt::Key_Up);
        screen.press(Qt::Key_Right);
        screen.press(Qt::Key_Down);
    }
    lookUp(screen.words().constFirst());
    screen.picture(QStringLiteral("no-dictionary"));
    screen.press(Qt::Key_Back);
}

void Journey::connectSlowly() {
    Screen& screen = m_hand.screen();
    vellum::state::setNetState(0); // an earlier half of the tour connected
    vellum::state::setConnectDelayMs(2000);
    m_hand.askForMore();
    screen.waitFor(text("@AgentConnecting"));
    screen.picture(QStringLiteral("connecting"));
    screen.waitFor(text("@SelectDictionariesToDownload"));
    require(!screen.shows(text("@AgentConnecting")), QStringLiteral("the agent still says that it connects"));
    vellum::state::setConnectDelayMs(300);
}

void Journey::download() {
    Screen& screen = m_hand.screen();
    m_device.server().setSwitches(
        {{QStringLiteral("bytes_per_second"), 300000}}); // so that there is something to see
    m_hand.startDownload();
    waitUntil([&] { return screen.download().property("progress").toInt() > 30; }, QStringLiteral("progress"),
              60000);
    screen.picture(QStringLiteral("progress"));
    screen.waitFor(text("@SuccessfullyDownloaded"), 60000);
    screen.picture(QStringLiteral("success"));
    m_device.server().resetSwitches();
    m_hand.press(text("@OK"));
    m_hand.waitForPage();
    require(installedDictionaries() >= 2, QStringLiteral("they aren't installed"));
}

void Journey::choose(const QString& title) {
    m_hand.choose(title);
    m_hand.waitForPage();
}

void Journey::lookUp(const SeenWord& word) {
    if (m_hand.isTouch())
        m_hand.screen().tapAt(word.centre);
    else
        m_hand.screen().press(Qt::Key_Return); // the marked one
}

void Journey::lookUpWord() {
    Screen& screen = m_hand.screen();
    // What is headed by the dictionary's name, which the page bears at its foot anyway, and doesn't say that
    // there is none.
    const QString name = QString::fromStdString(currentDictionary());
    const QString noEntry = text("@ReaderNoEntry").section(u'%', 0, 0);
    const auto showsEntry = [&] {
        QStringList texts;
        for (const QQuickItem* const item : screen.texts())
            texts << textOf(*item);
        return texts.count(name) > 1 && texts.filter(noEntry).isEmpty();
    };
    for (const SeenWord& word : screen.words()) {
        if (word.text.size() < longWord)
            continue;
        lookUp(word);
        if (showsEntry()) {
            screen.picture(QStringLiteral("entry"));
            screen.press(Qt::Key_Back);
            return;
        }
        screen.press(Qt::Key_Back);
        if (!m_hand.isTouch())
            screen.press(Qt::Key_Right);
    }
    throw StepFailed(QStringLiteral("no word of the page is in it"));
}

void Journey::lookAround() {
    Screen& screen = m_hand.screen();
    m_log.run(QStringLiteral("what is known of a dictionary is shown"), [&] {
        m_hand.openDictionaries();
        lookAtInformation(m_titles.at(0), QStringLiteral("information"));
        return QString();
    });
    m_log.run(QStringLiteral("a file that is no dictionary has its row"), [&] {
        m_hand.leave();
        QFile file(m_device.path("/mnt/ext1/system/dictionaries/Old notes.tsdict"));
        require(file.open(QIODevice::WriteOnly), QStringLiteral("it can't be made"));
        const auto gone = qScopeGuard([&file] { file.remove(); });
        m_hand.openDictionaries();
        screen.picture(QStringLiteral("list-other"));
        m_hand.openInformation(QStringLiteral("Old notes"));
        screen.waitFor(text("@Languages"));
        screen.picture(QStringLiteral("information-other"));
        return QString();
    });
    m_log.run(QStringLiteral("morphology data of its language are installed"), [&] {
        m_hand.leave();
        const QString folder = m_device.path("/mnt/ext1/system/hunspell");
        for (const char* const file : {"/en.dic", "/en.aff"}) // of an earlier tour
            QFile::remove(folder + QLatin1String(file));
        const auto tile = [](const char* key) { // doesn't name the language
            return text(key).remove(QStringLiteral("%s")).simplified();
        };
        m_hand.openDictionaries();
        screen.waitFor(tile("@DownloadMorphology"));
        screen.picture(QStringLiteral("morphology"));
        m_device.server().setSwitches({{QStringLiteral("delay_ms"), 5000}});
        m_hand.pressAbove(m_titles.at(0), tile("@DownloadMorphology"));
        screen.waitFor(tile("@InstallingMorphology"));
        screen.picture(QStringLiteral("morphology-progress"));
        screen.press(Qt::Key_Back);
        screen.waitFor(text("@DoYouWantToStopTheDownload"));
        screen.picture(QStringLiteral("stop"));
        m_hand.press(text("@ContinueDownloading"));
        m_device.server().resetSwitches();
        waitUntil([&] { return QFile::exists(folder + QStringLiteral("/en.dic")); },
                  QStringLiteral("the data"));
        screen.waitFor(tile("@MorphologyHasBeenInstalled"));
        screen.picture(QStringLiteral("morphology-installed"));
        return QString();
    });
    m_log.run(QStringLiteral("Back leads to the page"), [&] {
        m_hand.leave();
        return QString();
    });
}

void Journey::lookAtInformation(const QString& title, const QString& picture) {
    Screen& screen = m_hand.screen();
    m_hand.openInformation(title);
    screen.waitFor(text("@Languages"));
    screen.waitForFetchedImage();
    screen.picture(picture);
    screen.press(Qt::Key_Back);
    screen.waitUntilGone(text("@Languages"));
}

void Journey::deleteDictionary(const QString& title) {
    Screen& screen = m_hand.screen();
    const int before = installedDictionaries();
    m_hand.openInformation(title);
    screen.waitFor(text("@Languages"));
    const auto askToDelete = [&] {
        if (m_hand.isTouch()) {
            screen.tap(text("@Delete"));
        } else {
            screen.press(Qt::Key_Right);
            screen.press(Qt::Key_Return);
        }
        screen.waitFor(text("@Yes"));
    };
    askToDelete();
    screen.picture(QStringLiteral("delete"));
    m_hand.press(text("@No"));
    screen.waitUntilGone(text("@Yes"));
    require(installedDictionaries() == before, QStringLiteral("it was deleted although the answer was no"));
    askToDelete();
    QSignalSpy deleted(&screen.list(), SIGNAL(dictionaryDeleted(QString, QString, int)));
    m_hand.press(text("@Yes"));
    waitUntil([&] { return !deleted.isEmpty(); }, QStringLiteral("its deletion"));
    require(installedDictionaries() == before - 1, QStringLiteral("its file is still there"));
    const QString message =
        text("@DictionaryWasDeleted").arg(deleted[0][0].toString(), deleted[0][1].toString());
    screen.waitFor(message);
    screen.picture(QStringLiteral("deleted"));
    if (m_hand.isTouch()) // it lies over what comes next
        screen.tap(message);
    screen.waitUntilGone(title);
}

void Journey::deleteAgain() {
    m_log.run(QStringLiteral("both dictionaries are deleted"), [&] {
        m_hand.openDictionaries();
        deleteDictionary(m_titles.at(1));
        deleteDictionary(m_titles.at(0));
        m_hand.leave();
        return QString();
    });
}

} // namespace tessaly::tour
