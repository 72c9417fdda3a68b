#include "vx/platform/VxExceptions.h"

#include <QtGlobal>

namespace vx {

Exception::Exception(const QString& message)
{
    SetMessage(message);
}

void Exception::SetMessage(const QString& message)
{
    FMessage = message;
    FUtf8 = message.toUtf8();
}

EListError EListError::IndexOutOfBounds(int index)
{
    return EListError(QStringLiteral("List index out of bounds (%1)").arg(index));
}

namespace {
TApplicationExceptionHandler& applicationHandler()
{
    static TApplicationExceptionHandler handler;
    return handler;
}
} // namespace

void SetApplicationExceptionHandler(TApplicationExceptionHandler handler)
{
    applicationHandler() = std::move(handler);
}

void HandleApplicationException(Exception& error)
{
    if (applicationHandler())
        applicationHandler()(error);
    else
        qWarning("%s", error.what());
}

} // namespace vx
