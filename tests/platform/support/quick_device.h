#pragma once

#include <QCoreApplication>
#include <QJSEngine>
#include <QKeyEvent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <algorithm>
#include <platform/vellum/testing.h>
#include <simulator/fixture/seen_items.h>
#include <vellum/device_state.h>

namespace tessaly::tests {

/// What the documents of a Qt Quick Test do with the device under them, whose root the process has already.
class QuickDevice : public QObject {
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
    Q_INVOKABLE static bool isKeptAwake() { return vellum::testing::activeSleepPreventors() > 0; }

    /// What a key that is held sends.
    Q_INVOKABLE static void repeatKey(QQuickItem* anyItem, int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(anyItem->window(), &event);
    }

    /// The front one of what is visible in `item` for which `matches` returns true, or null. Not as a
    /// pointer: the engine would take it for its own.
    Q_INVOKABLE [[nodiscard]] QJSValue find(const QQuickItem* item, const QJSValue& matches) const {
        const QList<QQuickItem*> visible = visibleItems(*item);
        const auto value = [this](QObject* each) { return qjsEngine(this)->toScriptValue(each); };
        const auto found = std::find_if(visible.rbegin(), visible.rend(), [&](QQuickItem* each) {
            return matches.call({value(each)}).strictlyEquals(true);
        });
        return found == visible.rend() ? QJSValue::NullValue : value(*found);
    }

    /// Makes the built modules and, as `device`, this object known to an engine.
    void setUp(QQmlEngine* engine) {
        engine->addImportPath(QStringLiteral(TESSALY_QML_DIR));
        engine->rootContext()->setContextProperty(QStringLiteral("device"), this);
        // Of warnings that come while a test runs, the test takes care.
        connect(engine, &QQmlEngine::warnings, this, [](const QList<QQmlError>& warnings) {
            if (QTest::currentTestFunction() == nullptr)
                qFatal("%s", qPrintable(warnings.constFirst().toString()));
        });
    }
};

} // namespace tessaly::tests
