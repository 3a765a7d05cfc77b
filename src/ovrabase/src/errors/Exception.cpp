// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/errors/Exception.h>

#include <tuple>
#include <utility>

namespace Vyn::Exception {

BaseException::BaseException(const std::string &message)
    : mMessage(message)
{
}

BaseException::BaseException(const QString &message)
    : BaseException(message.toStdString())
{
}

BaseException::BaseException(const char *message)
    : BaseException(std::string(message ? message : ""))
{
}

BaseException::BaseException(const BaseException &other)
    : std::exception(other)
    , mMessage(other.mMessage.str())
    , mWhat(other.mWhat)
{
}

BaseException &BaseException::operator=(const BaseException &other)
{
    return *this = BaseException(other);
}

BaseException::BaseException(BaseException &&other) noexcept = default;
BaseException &BaseException::operator=(BaseException &&other) noexcept = default;
BaseException::~BaseException() = default;

const char *BaseException::what() const noexcept
{
    try {
        mWhat = mMessage.str();
    } catch (...) {
        // Out of memory. mWhat still holds the text of the previous call.
    }
    return mWhat.c_str();
}

unsigned int BaseException::errorSubCode() const
{
    return 0;
}

void BaseException::addTrace(const std::string &trace)
{
    mMessage << " <" << trace;
}

IOException::IOException(const std::string &message, QString subject)
    : BaseException(message)
    , mSubject(std::move(subject))
{
}

IOException::IOException(const QString &message, QString subject)
    : BaseException(message)
    , mSubject(std::move(subject))
{
}

IOException::IOException(const char *message, QString subject)
    : BaseException(message)
    , mSubject(std::move(subject))
{
}

template class OVRABASE_DETAIL_DEFINED Exception<0, InternalException>;
template class OVRABASE_DETAIL_DEFINED Exception<1, InternalException>;
template class OVRABASE_DETAIL_DEFINED Exception<2, InternalException>;
template class OVRABASE_DETAIL_DEFINED Exception<0, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<1, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<2, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<3, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<4, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<5, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<6, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<7, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<8, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<9, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<10, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<11, IOException>;
template class OVRABASE_DETAIL_DEFINED Exception<0, ParameterException>;
template class OVRABASE_DETAIL_DEFINED Exception<1, ParameterException>;

/// Makes the compiler emit the virtual function table and the type information of each class, so
/// that the library exports them.
///
/// The compiler emits both for a class without an out-of-line virtual function only in sources that
/// create objects of the class, and the library creates no objects of some of the classes.
template<class... Failures>
struct Emitted {
    static std::tuple<Failures...> copiesOf(const Failures &...failures) { return {failures...}; }
};
template struct Emitted<InternalException, IOException, ParameterException, LogicErrorException,
    RuntimeErrorException, DomainErrorException, FileOpenException, FileReadingException,
    FileWritingException, FileCopyException, FileFormatException, FileDeletionException,
    FolderCreationException, FolderNotFoundException, FolderDeletionException, DriveMountException,
    DriveUnmountException, NetworkConnectionException, NullParameterException,
    InvalidArgumentException>;

} // namespace Vyn::Exception
