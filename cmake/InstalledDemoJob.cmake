# Writes the demo job file for the installed examples: the same job less the keys that name the
# source tree's template folder and templates, so an installed program uses its default folder.
file(READ ${INPUT} content)
string(REGEX REPLACE "(Template Directory|Cover Template|Body Template|Summary Template)=[^\n]*\n"
       "" content "${content}")
file(WRITE ${OUTPUT} "${content}")
