// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileError_p.h"

#include <string>

namespace Vyn::OvraBase {
namespace {

class FileErrorCategory : public std::error_category {
public:
    const char *name() const noexcept override { return "ovrabase files"; }

    std::string message(int error) const override
    {
        switch (static_cast<FileError>(error)) {
        case FileError::NotAPath:
            return "one of them is not a path";
        case FileError::SameFile:
            return "source and destination are the same file";
        case FileError::SourceIsNoFile:
            return "the source is not a file";
        case FileError::SourceNotOpened:
            return "the source cannot be opened";
        case FileError::NameUnreadable:
            return "a name in the folder cannot be read";
        }
        return "unknown error";
    }
};

} // namespace

std::error_code make_error_code(FileError error)
{
    static const FileErrorCategory category;
    return {static_cast<int>(error), category};
}

QString reasonOf(const std::error_code &error)
{
    // On Windows, message() is in the local code page, which fromStdString() would not decode.
    return error.category() == std::system_category() ? qt_error_string(error.value())
                                                      : QString::fromStdString(error.message());
}

} // namespace Vyn::OvraBase
