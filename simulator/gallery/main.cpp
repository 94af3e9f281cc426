#include "simulator/fixture/test_device.h"

#include <QCommandLineParser>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QThread>
#include <vellum/device_state.h>

namespace {

using vellum::state::Input;

/// Lets the device's state arrive and the page be drawn.
void settle() {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 150) {
        QCoreApplication::processEvents();
        QThread::msleep(5);
    }
}

QSize parseSize(const QString& text) {
    const QStringList sides = text.split(QLatin1Char('x'));
    return sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : QSize();
}

bool savePage(QQuickView& view, const QString& page, const QString& path) {
    view.setSource(QUrl(QStringLiteral("qrc") + page));
    settle();
    if (view.status() == QQuickView::Ready && view.grabWindow().save(path))
        return true;
    qCritical("%s could not be saved", qPrintable(path));
    return false;
}

/// Every page in each input profile and language. False if one couldn't be saved or its document complained.
bool savePages(const QDir& folder, const QSize& screen) {
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral(TESSALY_QML_DIR));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(screen);
    view.show();
    bool saved = true;
    QObject::connect(view.engine(), &QQmlEngine::warnings, &view, [&saved] { saved = false; });
    for (const Input input : {Input::Touch, Input::Keys}) {
        vellum::state::setInput(input);
        for (const char* language : {"en", "de", "fr", "ru"}) {
            vellum::state::setLanguage(language);
            settle();
            QDirIterator pages(QStringLiteral(":/gallery/pages"), {QStringLiteral("*.qml")});
            while (pages.hasNext()) {
                const QString page = pages.next();
                const QString name = QStringLiteral("%1-%2-%3.png")
                                         .arg(pages.fileInfo().baseName(),
                                              QLatin1String(input == Input::Touch ? "touch" : "keys"),
                                              QLatin1String(language));
                if (!savePage(view, page, folder.filePath(name)))
                    saved = false;
            }
        }
    }
    return saved;
}

} // namespace

/// Saves pictures of the device's controls in every state, and of the interface's dialogs, for somebody to
/// look at.
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Saves a picture of each page of controls in DIR."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("DIR"), QStringLiteral("where the pictures go"));
    const QCommandLineOption screenOption(QStringLiteral("screen"),
                                          QStringLiteral("the device's screen in pixels"),
                                          QStringLiteral("WIDTHxHEIGHT"), QStringLiteral("758x1024"));
    parser.addOption(screenOption);
    parser.process(application);
    const QSize screen = parseSize(parser.value(screenOption));
    if (parser.positionalArguments().size() != 1 || screen.isEmpty())
        parser.showHelp(1);

    const QDir folder(parser.positionalArguments().constFirst());
    if (!folder.mkpath(QStringLiteral("."))) {
        qCritical("%s can't be made", qPrintable(folder.path()));
        return 1;
    }
    tessaly::fixture::TestDevice device;
    device.setOnline(false);
    vellum::state::setScreen(parser.value(screenOption).toStdString());
    return savePages(folder, screen) ? 0 : 1;
}
