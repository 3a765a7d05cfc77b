# Doxygen reads the public headers through this filter. It removes declarations that have no comment and
# that the site need not show: copies, moves, using declarations, explicit instantiations, private macros.

# Does not apply the rest of the script to a declaration with a comment. A line that opens or closes a
# group is not the comment of a declaration.
/^ *\/\/\// {
    :comment
    /^ *\/\/\/ [\\@][{}]/ b
    n
    /^ *\/\/\// b comment
    b
}
# Copy and move functions without a comment.
s/^ *(OVRABASE_EXPORT )?(\w+)\((const \2 &|\2 &&)\w*\)( noexcept)?( = default)?;$//
s/^ *(OVRABASE_EXPORT )?(\w+) &operator=\((const \2 &|\2 &&)\w*\)( noexcept)?( = default)?;$//
s/^ *using \w+::\w+;$//
s/^extern template .*//
s/^#define OVRABASE_DETAIL_.*//
# The comment of a group describes the forms of all logStr() in it.
s|^OVRABASE_EXPORT QString logStr\(.*\);$|/** Returns the form that the comment of this group describes. */ &|
s|^template<Detail::HasForm .*>$|/** Returns the form that the comment of this group describes. */ &|
