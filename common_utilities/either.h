#pragma once

#include <base/either_private.h>
#include <base/log.h>

#include <QDebug>
#include <boost/assert.hpp>
#include <boost/optional.hpp>
#include <boost/variant.hpp>
#include <cstdlib>
#include <functional>
#include <ostream>
#include <utility>

namespace tessaly {

template<class L, class R>
class Either;

/// An error on its way into an Either, which it turns into by itself.
template<class T>
class Left {
public:
    Left(const T& value)
        : m_value(value) {}

    template<class R>
    operator Either<T, R>() const {
        return Either<T, R>(*this);
    }

    const T& value() const {
        BOOST_ASSERT(m_value);
        return *m_value;
    }

    template<class U>
    Left<U> map(const std::function<U(const T&)>& function) const {
        return Left<U>(function(value()));
    }

private:
    boost::optional<T> m_value;
};

/// A value on its way into an Either, which it turns into by itself.
template<class T>
class Right {
public:
    Right(T value)
        : m_value(std::move(value)) {}

    template<class L>
    operator Either<L, T>() const& {
        return Either<L, T>(*this);
    }
    template<class L>
    operator Either<L, T>() && {
        return Either<L, T>(std::move(*this));
    }

    const T& value() const& {
        BOOST_ASSERT(m_value);
        return *m_value;
    }
    T&& value() && {
        BOOST_ASSERT(m_value);
        return std::move(*m_value);
    }

private:
    boost::optional<T> m_value;
};

namespace EitherPrivate {

/// `word` differs between the two kinds of result on purpose.
template<class L>
void reportUnexpected(const char* word, const L& error) {
    qCritical() << "\033[31m" << word << error << "\033[0m";
    if (shouldExitOnError())
        std::exit(-1);
}

} // namespace EitherPrivate

/// The result of an operation that can fail: an error (left) or a value (right).
///
///     Either<DAOError, int> count() {
///         if (!query.exec())
///             return Left<DAOError>(DAOError("can not count", query.lastError()));
///         return Right<int>(query.value(0).toInt());
///     }
///     const int shown = count().qGetOrErr(0); // logs an error
///
/// Ask isRight() before getRight(), which throws. Operations aren't chained: there is no map or flatMap on
/// it. A plain value: copied between threads freely, used by one at a time.
template<class L, class R>
class Either {
public:
    explicit Either(const Left<L>& left)
        : m_value(Alternative<L, 0>{left.value()}) {}
    explicit Either(const Right<R>& right)
        : m_value(Alternative<R, 1>{right.value()}) {}
    explicit Either(Right<R>&& right)
        : m_value(Alternative<R, 1>{std::move(right).value()}) {}

    [[nodiscard]] bool isLeft() const { return m_value.which() == 0; }
    [[nodiscard]] bool isRight() const { return m_value.which() == 1; }

    [[nodiscard]] boost::optional<L> left() const {
        return isLeft() ? boost::optional<L>(getLeft()) : boost::optional<L>();
    }
    [[nodiscard]] boost::optional<R> right() const {
        return isRight() ? boost::optional<R>(getRight()) : boost::optional<R>();
    }

    /// The alternative itself; throws boost::bad_get if it is the other one.
    const L& getLeft() const { return boost::get<Alternative<L, 0>>(m_value).value; }
    const R& getRight() const { return boost::get<Alternative<R, 1>>(m_value).value; }

    /// The value, or `fallback` after a critical log record.
    R qGetOrErr(const R& fallback) const {
        if (isRight())
            return getRight();
        EitherPrivate::reportUnexpected("[error] expected right but", getLeft());
        return fallback;
    }

    /// The value of a result that must not have failed: a failure is logged, and ends the process with -1.
    R unwrap() const {
        if (isLeft()) {
            log::cb::error(__FILE__, __LINE__, __PRETTY_FUNCTION__,
                           [this](std::ostream& out) -> std::ostream& {
                               return out << "expected right but " << getLeft();
                           });
            std::exit(-1);
        }
        return getRight();
    }

private:
    // The index keeps the alternatives apart when error and value are of one type.
    template<class T, int>
    struct Alternative {
        T value;
    };
    boost::variant<Alternative<L, 0>, Alternative<R, 1>> m_value;
};

/// The result of an operation that can fail and gives nothing when it doesn't; `return {};` is success.
template<class L>
class Either<L, void> {
public:
    Either() = default;
    explicit Either(const Left<L>& left)
        : m_error(left.value()) {}

    [[nodiscard]] bool isLeft() const { return m_error.has_value(); }
    [[nodiscard]] bool isRight() const { return !isLeft(); }
    [[nodiscard]] boost::optional<L> left() const { return m_error; }

    /// Logs a held error with a critical record.
    void qGetOrErr() const {
        if (m_error)
            EitherPrivate::reportUnexpected("[warn] expected right but", *m_error);
    }

private:
    boost::optional<L> m_error;
};

} // namespace tessaly
