# Turns one user-guide page from Markdown into HTML: cmark-gfm makes the body (with tables), FRAME gives the page
# around it (@TITLE@, @BODY@, @VERSION@), and links between the Markdown pages become links
# between the HTML pages.
execute_process(COMMAND ${CMARK} --extension table --extension autolink --to html ${INPUT} OUTPUT_VARIABLE body RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "cmark-gfm failed on ${INPUT}")
endif()
string(REGEX REPLACE "href=\"([^\":#]+)\\.md([#\"])" "href=\"\\1.html\\2" body "${body}")
# The page title is the first heading.
file(STRINGS ${INPUT} headings REGEX "^# ")
list(GET headings 0 title)
string(REGEX REPLACE "^# +" "" title "${title}")
file(READ ${FRAME} frame)
set(TITLE "${title} - Tavrel User Guide")
if(title STREQUAL "Tavrel User Guide")
    set(TITLE "${title}")
endif()
set(BODY "${body}")
string(CONFIGURE "${frame}" page @ONLY)
file(WRITE ${OUTPUT} "${page}")
