#!/bin/bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Checks what a built library exports: at least the functions listed below; no name of the namespace
# Vyn::OvraBase::os or of an unnamed namespace; nothing from outside the namespace Vyn except what the
# compiler generates for the classes of Vyn; and no variables except the instance of the service locator
# and Qt's meta-objects. The DLL must not be stripped.
#
#   tools/check-exports.sh build/dev/src/ovrabase/libovrabase.so
#   tools/check-exports.sh build/windows/bin/libovrabase.dll
set -euo pipefail
library=$1

# Prints "kind mangled-name" for every export. The kind is the letter of nm, or "?" if nm lacks the name.
list_exports() {
    case $library in
    *.dll)
        local mingw=x86_64-w64-mingw32
        awk 'NR == FNR { kind[$NF] = $(NF - 1); next } { print ($1 in kind) ? kind[$1] : "?", $1 }' \
            <("$mingw-nm" --defined-only "$library") \
            <("$mingw-objdump" -p "$library" | sed -n '/^\[Ordinal\/Name Pointer\]/,/^$/s/^\t\[.*\] *//p')
        ;;
    *) nm --dynamic --defined-only --extern-only "$library" | awk '{ print $(NF - 1), $NF }' ;;
    esac
}

exports=$(list_exports | c++filt | sort)
compilers='(vtable|VTT|typeinfo|typeinfo name|guard variable) for |construction vtable for .*-in-'
compilers+='|(virtual|non-virtual) thunk to '
# For an exported class with an imported base, GCC adds type information of the base to the DLL.
foreign=$(grep -vE "^. ($compilers)?Vyn::|^. typeinfo (name )?for QObject$" <<<"$exports" || true)
# Functions are T or W. Qt's meta-object compiler gives each QObject class a staticMetaObject.
data=$(grep -vE "^[TW] |^. ($compilers)|^. Vyn::.*::staticMetaObject$" <<<"$exports" \
    | grep -vE '^. Vyn::OvraBase::ServiceLocator::mUniqueInstance$' || true)

status=0
complain() {
    printf '%s: %s\n%s\n' "$library" "$1" "$2"
    status=1
}
grep -q '^T Vyn::' <<<"$exports" || complain "no function of the namespace Vyn is exported" ""
private=$(grep -E 'Vyn::OvraBase::os::|\(anonymous namespace\)' <<<"$exports" || true)
[ -z "$private" ] || complain "exports private names:" "$private"
for name in Exception::BaseException::what Logger::info Core::Log::bindLogger Core::Log::SpdlogDelegate::log OvraBase::bindLoggers logStr \
    OvraBase::FileUtils::copyWithBackup MurmurHash3_x86_32 OvraBase::UrlUtils::toNativePath \
    OvraBase::StringUtils::parseInput OvraBase::StdUtils::trimString OvraBase::stringToMeter \
    OvraBase::ServiceLocator::start OvraBase::MessagingService::mute \
    OvraBase::DefaultAsyncRecovery::dumpRegistry future\<void\>::await QObjectDeleteLater::operator \
    OvraBase::loadSharedLibrary OvraBase::ThreadUtils::isMainThread OvraBase::getDisksInfo; do
    grep -q "^[TW] Vyn::$name" <<<"$exports" || complain "does not export" "$name"
done
grep -q '^. Vyn::OvraBase::ServiceLocator::mUniqueInstance$' <<<"$exports" || complain "does not export" mUniqueInstance
[ -z "$foreign" ] || complain "exports from outside the namespace Vyn:" "$foreign"
[ -z "$data" ] || complain "exports other variables:" "$data"
[ $status = 0 ] && echo "$library: $(wc -l <<<"$exports") exports, as intended"
exit $status
