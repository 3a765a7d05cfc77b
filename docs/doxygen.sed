# What the site shows of a header: not what every class has, and not what the library keeps for itself.

# The declaration under a comment stays, but not what follows the brace of a group.
/^ *\/\/\// {
    :comment
    /^ *\/\/\/ [\\@][{}]/ b
    n
    /^ *\/\/\// b comment
    b
}
# Copies and moves without a comment do what every copy does.
s/^ *(OVRABASE_EXPORT )?(\w+)\((const \2 &|\2 &&)\w*\)( noexcept)?( = default)?;$//
s/^ *(OVRABASE_EXPORT )?(\w+) &operator=\((const \2 &|\2 &&)\w*\)( noexcept)?( = default)?;$//
s/^ *using \w+::\w+;$//
s/^extern template .*//
s/^#define OVRABASE_DETAIL_.*//
# The forms of logStr() are told once, for each group.
s|^OVRABASE_EXPORT QString logStr\(.*\);$|/** Returns the form that is told for this group. */ &|
s|^template<LogStr::HasForm .*>$|/** Returns the form that is told for this group. */ &|
