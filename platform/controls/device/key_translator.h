#pragma once

#include <QPointer>
#include <QQmlEngine>
#include <QTranslator>
#include <vector>

namespace tessaly::controls {

/// Translates the interface's keys into the device's language, whichever document uses them, and follows a
/// change of language. One for the process. GUI thread.
class KeyTranslator : public QTranslator {
    Q_OBJECT

public:
    static KeyTranslator* instance();

    /// Retranslates the engine's texts whenever the language changes.
    void serve(QQmlEngine* engine);

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* sourceText, const char* disambiguation,
                                    int n) const override;

private:
    KeyTranslator();
    void load();

    QString m_language;
    std::vector<QPointer<QQmlEngine>> m_engines;
};

} // namespace tessaly::controls
