#include <tests/support/files.h>

#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

namespace {

using namespace Qt::StringLiterals;

struct Message {
    bool finished = true;
    bool plural = false;
    QStringList texts;
};
using Catalogue = QMap<QString, Message>;

const std::pair<QString, int> pluralForms[] = {{u"en"_s, 2}, {u"de"_s, 2}, {u"fr"_s, 2}, {u"ru"_s, 3}};

QString source(const QString& path) {
    return QStringLiteral(TESSALY_SOURCE_DIR "/") + path;
}

Catalogue readCatalogue(const QString& path) {
    QXmlStreamReader xml(readFile(path));
    Catalogue catalogue;
    QString key;
    bool plural = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == "message"_L1) {
            plural = xml.attributes().value("numerus"_L1) == "yes"_L1;
        } else if (xml.name() == "source"_L1) {
            key = xml.readElementText();
            if (catalogue.contains(key))
                xml.raiseError(key + u" is there twice"_s);
            catalogue[key].plural = plural;
        } else if (xml.name() == "translation"_L1) {
            catalogue[key].finished = !xml.attributes().hasAttribute("type"_L1);
            if (!plural)
                catalogue[key].texts += xml.readElementText();
        } else if (xml.name() == "numerusform"_L1) {
            catalogue[key].texts += xml.readElementText();
        }
    }
    if (xml.hasError())
        qFatal("%s:%lld: %s", qPrintable(path), xml.lineNumber(), qPrintable(xml.errorString()));
    return catalogue;
}

/// The keys that documents show, and whether they ask for a plural form.
QMap<QString, bool> usedKeys() {
    static const QRegularExpression literal(
        u"[\"'](@[A-Za-z]\\w*[?]?)[\"'](\\s*,\\s*[\"'][^\"']*[\"']\\s*,)?"_s);
    QMap<QString, bool> keys;
    for (const QString& folder : {u"dictpmplugin/qml"_s, u"platform/controls"_s, u"simulator/window"_s}) {
        const auto files = folderContent(source(folder));
        for (auto file = files.begin(); file != files.end(); ++file) {
            const QString text = file.key().endsWith(".qml"_L1) ? QString::fromUtf8(*file) : QString();
            for (const QRegularExpressionMatch& found : literal.globalMatch(text))
                keys[found.captured(1)] |= found.hasCaptured(2);
        }
    }
    return keys;
}

/// What is filled in, in the order of its names: another language may say it in another order.
QStringList placeholders(const QString& text) {
    static const QRegularExpression placeholder(u"%[0-9a-zA-Z]+"_s);
    QStringList found;
    for (const QRegularExpressionMatch& match : placeholder.globalMatch(text))
        found += match.captured();
    found.sort();
    return found;
}

} // namespace

class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void coversEveryKeyAndNoOther() {
        const QMap<QString, bool> keys = usedKeys();
        QCOMPARE(m_english.keys(), keys.keys());
        for (auto key = keys.begin(); key != keys.end(); ++key)
            QVERIFY2(m_english[key.key()].plural == key.value(), qPrintable(key.key()));
    }

    void languagesAgree() {
        for (const auto& [code, forms] : pluralForms) {
            const Catalogue catalogue = readTranslation(code);
            QCOMPARE(catalogue.keys(), m_english.keys());
            for (auto entry = catalogue.begin(); entry != catalogue.end(); ++entry) {
                const QByteArray where = code.toUtf8() + ": " + entry.key().toUtf8();
                const Message english = m_english[entry.key()];
                QVERIFY2(entry->finished && entry->plural == english.plural, where);
                QVERIFY2(entry->texts.size() == (entry->plural ? forms : 1), where);
                for (const QString& text : entry->texts)
                    QVERIFY2(!text.trimmed().isEmpty() &&
                                 placeholders(text) == placeholders(english.texts.constFirst()),
                             where);
            }
        }
    }

private:
    static Catalogue readTranslation(const QString& code) {
        return readCatalogue(source(u"platform/data/translations/tessaly_%1.ts"_s.arg(code)));
    }

    const Catalogue m_english = readTranslation(u"en"_s);
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "translations_test.moc"
