#pragma once
// Exception classes of the library, with the platform's standard messages, and the
// application-wide hook that receives exceptions caught at Qt event boundaries.

#include <QString>
#include <QByteArray>
#include <exception>
#include <functional>

namespace vx {

// Base of every exception the library raises; carries a user-readable message.
class Exception : public std::exception {
public:
    explicit Exception(const QString& message = QString());
    const QString& Message() const { return FMessage; }
    void SetMessage(const QString& message);
    const char* what() const noexcept override { return FUtf8.constData(); }

private:
    QString FMessage;
    QByteArray FUtf8;
};

// A text could not be converted, or an object could not be assigned.
class EConvertError : public Exception { using Exception::Exception; };

// Floating-point faults (the checked helpers of VxFloatMath raise these).
class EMathError : public Exception { using Exception::Exception; };
class EZeroDivide : public EMathError {
public:
    explicit EZeroDivide(const QString& message = QStringLiteral("Floating point division by zero"))
        : EMathError(message) {}
};
class EInvalidOp : public EMathError {
public:
    explicit EInvalidOp(const QString& message = QStringLiteral("Invalid floating point operation"))
        : EMathError(message) {}
};
class EOverflow : public EMathError {
public:
    explicit EOverflow(const QString& message = QStringLiteral("Floating point overflow"))
        : EMathError(message) {}
};

// An index outside the valid range of a vector or array.
class ERangeError : public Exception {
public:
    explicit ERangeError(const QString& message = QStringLiteral("Range check error"))
        : Exception(message) {}
};

// An index outside a list (the string list of the settings store, component lists).
class EListError : public Exception {
public:
    using Exception::Exception;
    // "List index out of bounds (Index)"
    static EListError IndexOutOfBounds(int index);
};

// File input/output failed (opening, creating or writing a file).
class EInOutError : public Exception { using Exception::Exception; };
class EFOpenError : public EInOutError { using EInOutError::EInOutError; };
class EFCreateError : public EInOutError { using EInOutError::EInOutError; };

// An operation on a component that its state does not allow.
class EComponentError : public Exception { using Exception::Exception; };

// Receives exceptions that were caught at a Qt event boundary (paint, mouse, timer),
// where they must not propagate into the event loop.
using TApplicationExceptionHandler = std::function<void(Exception& Error)>;

// Installs the application-wide handler; an empty function restores the default,
// which writes the message with qWarning.
void SetApplicationExceptionHandler(TApplicationExceptionHandler handler);

// Passes an exception to the installed handler.
void HandleApplicationException(Exception& error);

// Runs f and hands any exception it raises to the application handler; standard
// exceptions are wrapped into an Exception first. Use at event-loop boundaries.
template <typename F>
void GuardEvent(F&& f)
{
    try {
        f();
    } catch (Exception& e) {
        HandleApplicationException(e);
    } catch (std::exception& e) {
        Exception wrapped(QString::fromUtf8(e.what()));
        HandleApplicationException(wrapped);
    }
}

} // namespace vx
