#include "recent_catalogue.h"

#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <mutex>
#include <utility>

namespace tessaly::dictionary {

namespace {

struct Shelf {
    std::mutex mutex;
    std::optional<RecentCatalogue> catalogue;
    int number = 0; ///< of what was kept last
};

Shelf& shelf() {
    static Shelf instance;
    return instance;
}

void forget(int number) {
    const std::lock_guard lock(shelf().mutex);
    if (shelf().number == number)
        shelf().catalogue.reset();
}

} // namespace

void RecentCatalogue::keep(RecentCatalogue catalogue) {
    const std::lock_guard lock(shelf().mutex);
    shelf().catalogue = std::move(catalogue);
    // A worker has no event loop for a timer.
    if (QCoreApplication* const application = QCoreApplication::instance()) {
        const auto wait = [number = ++shelf().number] {
            QTimer::singleShot(std::chrono::minutes(1), [number] { forget(number); });
        };
        QMetaObject::invokeMethod(application, wait, Qt::QueuedConnection);
    }
}

std::optional<RecentCatalogue> RecentCatalogue::take(const std::string& url) {
    const std::lock_guard lock(shelf().mutex);
    if (!shelf().catalogue || shelf().catalogue->url != url)
        return std::nullopt;
    return std::exchange(shelf().catalogue, std::nullopt);
}

} // namespace tessaly::dictionary
