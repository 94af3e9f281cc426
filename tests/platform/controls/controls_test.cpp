#include "../support/bare_device.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQuickTest/quicktest.h>
#include <vellum/sleep_prevention.h>

namespace {

/// The device under the controls, and what the test documents do with it.
class Device : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE static void setTouch(bool touch) {
        vellum::state::setInput(touch ? vellum::state::Input::Touch : vellum::state::Input::Keys);
    }
    Q_INVOKABLE static void setLanguage(const QString& code) {
        vellum::state::setLanguage(code.toStdString());
    }
    Q_INVOKABLE static void setScreen(const QString& size) { vellum::state::setScreen(size.toStdString()); }
    Q_INVOKABLE static void setDebugMode(bool on) { vellum::state::setDebugMode(on); }
    Q_INVOKABLE static bool isKeptAwake() { return vellum::activeSleepPreventors() > 0; }

    /// What a key that is held sends.
    Q_INVOKABLE static void repeatKey(QQuickItem* anyItem, int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(anyItem->window(), &event);
    }

private:
    const tessaly::tests::BareDevice m_device;
};

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) {
        engine->addImportPath(QStringLiteral(TESSALY_QML_FOLDER));
        engine->rootContext()->setContextProperty(QStringLiteral("device"), &m_device);
        // Of warnings that come while a test runs, the test takes care.
        connect(engine, &QQmlEngine::warnings, this, [](const QList<QQmlError>& warnings) {
            if (QTest::currentTestFunction() == nullptr)
                qFatal("%s", qPrintable(warnings.constFirst().toString()));
        });
    }

private:
    Device m_device;
};

} // namespace

QUICK_TEST_MAIN_WITH_SETUP(controls, Setup)
#include "controls_test.moc"
