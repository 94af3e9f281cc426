#include "key_translator.h"

#include "device_info_provider.h"

#include <QCoreApplication>
#include <QFile>

namespace tessaly::controls {

KeyTranslator* KeyTranslator::instance() {
    static auto* const translator = new KeyTranslator; // the application uses it until its end
    return translator;
}

KeyTranslator::KeyTranslator() {
    load();
    QCoreApplication::installTranslator(this);
    connect(DeviceInfoProvider::instance(), &DeviceInfoProvider::changed, this, [this] {
        if (m_language == DeviceInfoProvider::instance()->language())
            return;
        load();
        for (const QPointer<QQmlEngine>& engine : m_engines) {
            if (engine)
                engine->retranslate();
        }
    });
}

void KeyTranslator::load() {
    m_language = DeviceInfoProvider::instance()->language();
    const QString pattern = QStringLiteral(":/tessaly/translations/tessaly_%1.qm");
    const QString file = pattern.arg(m_language);
    const bool known = QFile::exists(file);
    if (!known)
        qWarning("no translation into %s; the interface is in English", qPrintable(m_language));
    if (!QTranslator::load(known ? file : pattern.arg(QStringLiteral("en"))))
        qCritical("the interface's texts can not be loaded");
}

void KeyTranslator::serve(QQmlEngine* engine) {
    std::erase(m_engines, nullptr);
    m_engines.emplace_back(engine);
}

QString KeyTranslator::translate(const char*, const char* sourceText, const char*, int n) const {
    // One text per key: the document that asks, which is the context, makes no difference.
    return QTranslator::translate("keys", sourceText, nullptr, n);
}

} // namespace tessaly::controls
