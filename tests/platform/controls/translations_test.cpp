#include <QDirIterator>
#include <QFile>
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

struct Language {
    const char* code;
    int pluralForms;
};
constexpr Language languages[] = {{"en", 2}, {"de", 2}, {"fr", 2}, {"ru", 3}};

Message readMessage(QXmlStreamReader& xml, QString& key) {
    Message message;
    message.plural = xml.attributes().value("numerus"_L1) == "yes"_L1;
    while (xml.readNextStartElement()) {
        if (xml.name() == "source"_L1) {
            key = xml.readElementText();
        } else if (xml.name() == "translation"_L1) {
            message.finished = !xml.attributes().hasAttribute("type"_L1);
            if (!message.plural)
                message.texts = {xml.readElementText()};
            else
                while (xml.readNextStartElement())
                    message.texts += xml.readElementText();
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

Catalogue readCatalogue(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
    Catalogue catalogue;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != "message"_L1)
            continue;
        QString key;
        const Message message = readMessage(xml, key);
        if (catalogue.contains(key))
            qFatal("%s: %s is there twice", qPrintable(path), qPrintable(key));
        catalogue[key] = message;
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
    for (const char* folder : {"dictpmplugin/qml", "platform/controls", "simulator/window"}) {
        QDirIterator files(QStringLiteral(TESSALY_SOURCE_DIR "/") + QString::fromUtf8(folder), {u"*.qml"_s},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly))
                qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
            auto match = literal.globalMatch(QString::fromUtf8(file.readAll()));
            while (match.hasNext()) {
                const QRegularExpressionMatch found = match.next();
                bool& counts = keys[found.captured(1)];
                counts = counts || found.hasCaptured(2);
            }
        }
    }
    return keys;
}

/// What is filled in, in the order of its names: another language may say it in another order.
QStringList placeholders(const QString& text) {
    static const QRegularExpression placeholder(u"%[0-9a-zA-Z]+"_s);
    QStringList found;
    auto match = placeholder.globalMatch(text);
    while (match.hasNext())
        found += match.next().captured();
    found.sort();
    return found;
}

} // namespace

class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        for (const Language& language : languages)
            m_catalogues[QString::fromUtf8(language.code)] =
                readCatalogue(QStringLiteral(TESSALY_SOURCE_DIR "/platform/data/translations/tessaly_%1.ts")
                                  .arg(QString::fromUtf8(language.code)));
    }

    void coversEveryKey_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("counts");
        const QMap<QString, bool> keys = usedKeys();
        QVERIFY(keys.contains(u"@Yes"_s)); // the search finds what there is
        for (auto key = keys.begin(); key != keys.end(); ++key)
            QTest::newRow(qPrintable(key.key())) << key.key() << key.value();
    }

    void coversEveryKey() {
        QFETCH(const QString, key);
        QFETCH(const bool, counts);
        for (const Catalogue& catalogue : std::as_const(m_catalogues)) {
            QVERIFY(catalogue.contains(key));
            QCOMPARE(catalogue[key].plural, counts);
        }
    }

    void languagesAgree_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<int>("pluralForms");
        for (const Language& language : languages)
            QTest::newRow(language.code) << QString::fromUtf8(language.code) << language.pluralForms;
    }

    void languagesAgree() {
        QFETCH(const QString, code);
        QFETCH(const int, pluralForms);
        const Catalogue& catalogue = m_catalogues[code];
        const Catalogue& english = m_catalogues[u"en"_s];
        QCOMPARE(catalogue.keys(), english.keys());
        for (auto entry = catalogue.begin(); entry != catalogue.end(); ++entry) {
            const QByteArray where = code.toUtf8() + ": " + entry.key().toUtf8();
            QVERIFY2(entry->finished, where);
            QVERIFY2(entry->texts.size() == (entry->plural ? pluralForms : 1), where);
            for (const QString& text : entry->texts) {
                QVERIFY2(!text.trimmed().isEmpty(), where);
                QVERIFY2(placeholders(text) == placeholders(english[entry.key()].texts.constFirst()), where);
            }
        }
    }

private:
    QMap<QString, Catalogue> m_catalogues;
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "translations_test.moc"
