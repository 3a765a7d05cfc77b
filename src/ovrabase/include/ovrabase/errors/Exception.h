// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

#include <exception>
#include <sstream>
#include <string>

/// \file
/// The failures that the library reports, as one tree of classes under BaseException.
///
/// A category (InternalException, IOException, ParameterException) and a sub-code identify a
/// failure. Catch a concrete class for one failure, a category for its kind, BaseException or
/// std::exception for all. The library logs each failure on the Debug logger, then throws it by
/// value. An exception object belongs to one thread at a time.
namespace Vyn::Exception {

/// The root of the tree: a message that traces may be written over.
class OVRABASE_EXPORT BaseException : public std::exception {
public:
    /// Takes \a message as it is; text for other software is UTF-8.
    explicit BaseException(const std::string &message);
    /// Takes \a message as UTF-8.
    explicit BaseException(const QString &message);
    /// Takes the zero-terminated \a message; null counts as empty.
    explicit BaseException(const char *message);

    /// Copies the text. The next addTrace() on the copy writes at its beginning again.
    BaseException(const BaseException &other);
    BaseException(BaseException &&other) noexcept;
    BaseException &operator=(const BaseException &other);
    BaseException &operator=(BaseException &&other) noexcept;
    ~BaseException() override;

    /// Returns the current text, valid until the next call on this object or its end.
    const char *what() const noexcept override;

    /// Returns the number of the failure in its category, 0 for the categories themselves.
    virtual unsigned int errorSubCode() const;

    /// Writes " <" and \a trace over the text, from its beginning on; a second call goes on where
    /// the first stopped. What is longer than the text extends it.
    void addTrace(const std::string &trace);

private:
    std::stringstream mMessage;
    mutable std::string mWhat;
};

/// A fault of the program itself.
class OVRABASE_EXPORT InternalException : public BaseException {
public:
    using BaseException::BaseException;
};

/// A file, folder, drive or network resource that did not do what was asked of it.
class OVRABASE_EXPORT IOException : public BaseException {
public:
    /// \a subject names what failed: a path, a drive or a network resource. It is no part of
    /// what().
    IOException(const std::string &message, QString subject);
    /// The same, with \a message as UTF-8.
    IOException(const QString &message, QString subject);
    /// The same, with the zero-terminated \a message; null counts as empty.
    IOException(const char *message, QString subject);

    /// Returns the path, drive or network resource that the failure concerns.
    const QString &subject() const noexcept { return mSubject; }

private:
    QString mSubject;
};

/// An argument that a function cannot work with.
class OVRABASE_EXPORT ParameterException : public BaseException {
public:
    using BaseException::BaseException;
};

/// Failure number N of its Category; each concrete class below derives from one instance.
template<unsigned int N, class Category>
class Exception : public Category {
public:
    using Category::Category;

private:
    unsigned int errorSubCode() const override;
};

// Not in the class: GCC exports no inline function of a template from a DLL, and tables of derived
// classes in other modules point here.
template<unsigned int N, class Category>
unsigned int Exception<N, Category>::errorSubCode() const
{
    return N;
}

// MSVC exports an instance where it is defined, other compilers where it is declared.
#if defined(_MSC_VER) && defined(ovrabase_EXPORTS)
#define OVRABASE_DETAIL_DECLARED
#define OVRABASE_DETAIL_DEFINED OVRABASE_EXPORT
#else
#define OVRABASE_DETAIL_DECLARED OVRABASE_EXPORT
#define OVRABASE_DETAIL_DEFINED
#endif
extern template class OVRABASE_DETAIL_DECLARED Exception<0, InternalException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<1, InternalException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<2, InternalException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<0, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<1, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<2, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<3, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<4, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<5, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<6, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<7, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<8, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<9, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<10, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<11, IOException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<0, ParameterException>;
extern template class OVRABASE_DETAIL_DECLARED Exception<1, ParameterException>;

/// Code that contradicts itself.
class OVRABASE_EXPORT LogicErrorException : public Exception<0, InternalException> {
public:
    using Exception::Exception;
};

/// A condition that only shows while running.
class OVRABASE_EXPORT RuntimeErrorException : public Exception<1, InternalException> {
public:
    using Exception::Exception;
};

/// A value outside the domain of a computation.
class OVRABASE_EXPORT DomainErrorException : public Exception<2, InternalException> {
public:
    using Exception::Exception;
};

/// A file that cannot be opened.
class OVRABASE_EXPORT FileOpenException : public Exception<0, IOException> {
public:
    using Exception::Exception;
};

/// A file that opens but cannot be read.
class OVRABASE_EXPORT FileReadingException : public Exception<1, IOException> {
public:
    using Exception::Exception;
};

/// A file that cannot be written.
class OVRABASE_EXPORT FileWritingException : public Exception<2, IOException> {
public:
    using Exception::Exception;
};

/// A file that cannot be copied.
class OVRABASE_EXPORT FileCopyException : public Exception<3, IOException> {
public:
    using Exception::Exception;
};

/// A file whose content is not of the expected format.
class OVRABASE_EXPORT FileFormatException : public Exception<4, IOException> {
public:
    using Exception::Exception;
};

/// A file that cannot be removed.
class OVRABASE_EXPORT FileDeletionException : public Exception<5, IOException> {
public:
    using Exception::Exception;
};

/// A folder that cannot be made.
class OVRABASE_EXPORT FolderCreationException : public Exception<6, IOException> {
public:
    using Exception::Exception;
};

/// A folder that does not exist.
class OVRABASE_EXPORT FolderNotFoundException : public Exception<7, IOException> {
public:
    using Exception::Exception;
};

/// A folder that cannot be removed, or not with all its content.
class OVRABASE_EXPORT FolderDeletionException : public Exception<8, IOException> {
public:
    using Exception::Exception;
};

/// A drive that cannot be mounted.
class OVRABASE_EXPORT DriveMountException : public Exception<9, IOException> {
public:
    using Exception::Exception;
};

/// A drive that cannot be unmounted or ejected.
class OVRABASE_EXPORT DriveUnmountException : public Exception<10, IOException> {
public:
    using Exception::Exception;
};

/// A network resource that cannot be reached.
class OVRABASE_EXPORT NetworkConnectionException : public Exception<11, IOException> {
public:
    using Exception::Exception;
};

/// A null where an object is needed.
class OVRABASE_EXPORT NullParameterException : public Exception<0, ParameterException> {
public:
    using Exception::Exception;
};

/// An argument that has no meaning for the function.
class OVRABASE_EXPORT InvalidArgumentException : public Exception<1, ParameterException> {
public:
    using Exception::Exception;
};

} // namespace Vyn::Exception
