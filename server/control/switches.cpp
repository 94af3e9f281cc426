#include "control/switches.h"

#include <QJsonArray>

#include <algorithm>
#include <limits>
#include <optional>

namespace tessaly::server {

namespace {

/// Reads the values of a request, remembering the first that is wrong.
class Reader {
public:
    explicit Reader(const QJsonObject& object)
        : m_object(object) {}

    void number(QLatin1String key, auto& target) {
        const QJsonValue value = take(key);
        if (value.isUndefined())
            return;
        const qint64 read = value.toInteger(-1);
        if (read < 0 || read > std::numeric_limits<int>::max())
            fail(key, QStringLiteral("a number from 0 on"));
        else
            target = static_cast<std::remove_reference_t<decltype(target)>>(read);
    }

    void mode(QLatin1String key, QString& target, const QStringList& allowed, bool statusAllowed = true) {
        const QJsonValue value = take(key);
        if (value.isUndefined())
            return;
        const QString read = value.toString();
        if (allowed.contains(read) || (statusAllowed && statusOf(read) != 0))
            target = read;
        else
            fail(key, QStringLiteral("one of ") + allowed.join(u", ") +
                          (statusAllowed ? QStringLiteral(", status:N") : QString()));
    }

    void ids(QLatin1String key, QSet<int>& target) {
        const QJsonValue value = take(key);
        if (value.isUndefined())
            return;
        const QJsonArray array = value.toArray();
        const bool numbers =
            std::all_of(array.begin(), array.end(), [](const QJsonValue& id) { return id.isDouble(); });
        if (!value.isArray() || !numbers)
            return fail(key, QStringLiteral("an array of numbers"));
        target.clear();
        for (const QJsonValueConstRef id : array)
            target.insert(id.toInt());
    }

    QString error() const {
        if (!m_error.isEmpty() || m_object.isEmpty())
            return m_error;
        return QStringLiteral("there is no switch \"%1\"").arg(m_object.constBegin().key());
    }

private:
    QJsonValue take(QLatin1String key) {
        return m_object.contains(key) ? m_object.take(key) : QJsonValue::Undefined;
    }

    void fail(QLatin1String key, const QString& wanted) {
        if (m_error.isEmpty())
            m_error = QStringLiteral("\"%1\" has to be %2").arg(key, wanted);
    }

    QJsonObject m_object;
    QString m_error;
};

QStringList words(const char* text) {
    return QString::fromLatin1(text).split(u' ');
}

} // namespace

PackageFault Switches::builtInFault() const {
    if (packageFault == u"damaged")
        return PackageFault::Damaged;
    return packageFault == u"hostile" ? PackageFault::Hostile : PackageFault::None;
}

QString Switches::apply(const QJsonObject& object) {
    Switches changed = *this;
    Reader reader(object);
    reader.number(QLatin1String("delay_ms"), changed.delayMs);
    reader.mode(QLatin1String("catalogue"), changed.catalogue,
                words("normal malformed wrong_type wrong_records bad_record oversized extra_languages"));
    reader.ids(QLatin1String("unlisted"), changed.unlisted);
    reader.mode(QLatin1String("package_request"), changed.packageRequest, words("normal wait malformed"));
    reader.mode(QLatin1String("package_state"), changed.packageState, words("normal wait malformed"));
    reader.mode(QLatin1String("package_fault"), changed.packageFault,
                words("normal damaged truncated wrong_size hostile"), false);
    reader.number(QLatin1String("package_build_ms"), changed.packageBuildMs);
    reader.number(QLatin1String("bytes_per_second"), changed.bytesPerSecond);
    QString error = reader.error();
    if (error.isEmpty())
        *this = changed;
    return error;
}

QJsonObject Switches::toJson() const {
    QList<int> ids = unlisted.values();
    std::sort(ids.begin(), ids.end());
    QJsonArray left;
    for (const int id : ids)
        left << id;
    return {{QStringLiteral("delay_ms"), delayMs},
            {QStringLiteral("catalogue"), catalogue},
            {QStringLiteral("unlisted"), left},
            {QStringLiteral("package_request"), packageRequest},
            {QStringLiteral("package_state"), packageState},
            {QStringLiteral("package_fault"), packageFault},
            {QStringLiteral("package_build_ms"), packageBuildMs},
            {QStringLiteral("bytes_per_second"), bytesPerSecond}};
}

int statusOf(const QString& mode) {
    constexpr QLatin1String prefix("status:");
    if (!mode.startsWith(prefix))
        return 0;
    const int status = mode.sliced(prefix.size()).toInt();
    return status >= 200 && status <= 599 ? status : 0;
}

} // namespace tessaly::server
