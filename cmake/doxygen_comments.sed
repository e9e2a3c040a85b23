# The headers are written with plain comments, which read best in an editor. Doxygen wants them
# marked: the head of a file, what stands before a declaration, what stands behind one.
1s@^/\*$@/**\n * \\file@
1s@^// @/// \\file\n/// @
1b
/NOLINT/b
s@^/\*$@/**@
s@^/\* \(.*\) \*/$@/** \1 */@
s@\([;,]\) *//* \([^*]*\) \*/$@\1 /**< \2 */@
s@; *\(/\*\) \(.*\) \*/$@; /**< \2 */@
s@^\( *\)//$@\1///@
s@^\( *\)// @\1/// @
s@\([;,{]\) *// @\1 ///< @
