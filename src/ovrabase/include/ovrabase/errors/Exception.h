// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

#include <exception>
#include <sstream>
#include <string>

/// \file
/// The exception classes of the library. BaseException is the root of the tree.
///
/// A category (InternalException, IOException, ParameterException) and a sub-code identify a
/// failure. Catch a concrete class for one failure, a category for all failures of a kind, and
/// BaseException or std::exception for all failures. Before the library throws one of these
/// exceptions, it logs the failure as an error on the logger Debug. It throws by value. The classes
/// themselves log nothing. Two threads must not use the same exception object at the same time.
///
/// Some of the classes are only for the modules of the application. For example, ovrabase itself
/// throws no InternalException. The comment of a function names the exceptions that it throws.
namespace Vyn::Exception {

/// The root of the tree. Holds the text of the failure.
class OVRABASE_EXPORT BaseException : public std::exception {
public:
    /// Holds \a message, which should be UTF-8. Its bytes are not changed.
    explicit BaseException(const std::string &message);
    /// Holds \a message in UTF-8.
    explicit BaseException(const QString &message);
    /// Holds the zero-terminated \a message, which should be UTF-8. Null counts as an empty text.
    explicit BaseException(const char *message);

    /// Copies the text. The first addTrace() of the copy writes at the beginning of the text.
    BaseException(const BaseException &other);
    BaseException(BaseException &&other) noexcept;
    BaseException &operator=(const BaseException &other);
    BaseException &operator=(BaseException &&other) noexcept;
    ~BaseException() override;

    /// Returns the text. The pointer is valid until the next call of a member function, and no
    /// longer than this object.
    const char *what() const noexcept override;

    /// Returns the number of the failure within its category. Returns 0 for an object whose class
    /// is BaseException or a category.
    virtual unsigned int errorSubCode() const;

    /// Writes " <" and then \a trace over the text. The first call writes at the beginning of the
    /// text, and each further call after the previous one. The text grows if necessary.
    void addTrace(const std::string &trace);

private:
    std::stringstream mMessage; ///< overwritten by addTrace() from its put position on
    mutable std::string mWhat;  ///< the text that what() returned last
};

/// A mistake in the program.
class OVRABASE_EXPORT InternalException : public BaseException {
public:
    using BaseException::BaseException;
};

/// A failed operation on a file, a folder, a drive or a network resource.
class OVRABASE_EXPORT IOException : public BaseException {
public:
    /// Holds \a message, which should be UTF-8, and \a subject: the path, the drive or the network
    /// resource that the operation failed on. what() does not contain \a subject.
    IOException(const std::string &message, QString subject);
    /// Holds \a message in UTF-8, and \a subject as described above.
    IOException(const QString &message, QString subject);
    /// Holds the zero-terminated \a message, which should be UTF-8, and \a subject as described
    /// above. A null \a message counts as an empty text.
    IOException(const char *message, QString subject);

    /// Returns the path, the drive or the network resource that the operation failed on.
    const QString &subject() const noexcept { return mSubject; }

private:
    QString mSubject;
};

/// An argument that a function does not accept.
class OVRABASE_EXPORT ParameterException : public BaseException {
public:
    using BaseException::BaseException;
};

/// The failure with the sub-code N in Category. Each concrete class below derives from one
/// specialisation.
template<unsigned int N, class Category>
class Exception : public Category {
public:
    using Category::Category;

private:
    unsigned int errorSubCode() const override;
};

// Defined outside the class, and so not inline: GCC does not export an inline member of a class
// template from a DLL, but the virtual function tables of derived classes in other modules point to
// this function.
template<unsigned int N, class Category>
unsigned int Exception<N, Category>::errorSubCode() const
{
    return N;
}

// MSVC wants the export attribute at the definition of an explicit instantiation, and other
// compilers want it at the declaration.
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

/// A state that correct code cannot reach.
class OVRABASE_EXPORT LogicErrorException : public Exception<0, InternalException> {
public:
    using Exception::Exception;
};

/// A mistake in the program that shows only with certain data.
class OVRABASE_EXPORT RuntimeErrorException : public Exception<1, InternalException> {
public:
    using Exception::Exception;
};

/// A value outside the domain of a computation, by a mistake in the program. For a value that a
/// caller passed, use InvalidArgumentException.
class OVRABASE_EXPORT DomainErrorException : public Exception<2, InternalException> {
public:
    using Exception::Exception;
};

/// A file that cannot be opened.
class OVRABASE_EXPORT FileOpenException : public Exception<0, IOException> {
public:
    using Exception::Exception;
};

/// A file that can be opened but not read.
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

/// A folder that cannot be created.
class OVRABASE_EXPORT FolderCreationException : public Exception<6, IOException> {
public:
    using Exception::Exception;
};

/// A folder that does not exist.
class OVRABASE_EXPORT FolderNotFoundException : public Exception<7, IOException> {
public:
    using Exception::Exception;
};

/// A folder that cannot be removed completely.
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

/// A null argument of a function that needs an object.
class OVRABASE_EXPORT NullParameterException : public Exception<0, ParameterException> {
public:
    using Exception::Exception;
};

/// An argument with a value that the function does not accept.
class OVRABASE_EXPORT InvalidArgumentException : public Exception<1, ParameterException> {
public:
    using Exception::Exception;
};

} // namespace Vyn::Exception
