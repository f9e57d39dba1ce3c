# Installation and the Debian package.
#
# `cmake --install` lays Tavrel out as a desktop program: the two executables in bin/, the Classic
# templates in share/tavrel/, the desktop entry, icons and shared-mime-info package, the man pages
# and the user guide. `cpack` (or `make package` at the top of the tree) turns the same layout
# into a .deb whose dependencies dpkg-shlibdeps works out from the executables.
include(GNUInstallDirs)

set(TAVREL_PACKAGING_DIR ${CMAKE_SOURCE_DIR}/packaging)
set(TAVREL_DOC_BUILD_DIR ${CMAKE_BINARY_DIR}/doc)
# Debian's place for the package's documents is named after the package, not the project.
set(TAVREL_INSTALL_DOCDIR ${CMAKE_INSTALL_DATADIR}/doc/tavrel)

# The version the programs print for --version and in the About box.
foreach(program tavrel tavrel-cli)
    target_compile_definitions(${program} PRIVATE TAVREL_VERSION="${PROJECT_VERSION}")
endforeach()

# ---- generated documents: man pages, changelog, user guide ------------------------------------
# Debian wants man pages and the changelog compressed without a time stamp (gzip -n), so that the
# package is the same from one build to the next.
find_program(TAVREL_GZIP gzip REQUIRED)
set(tavrel_doc_outputs)
foreach(page tavrel.1 tavrel-cli.1)
    # The pages name the version they belong to.
    configure_file(${CMAKE_SOURCE_DIR}/docs/man/${page}.in ${TAVREL_DOC_BUILD_DIR}/man/${page} @ONLY)
    set(out ${TAVREL_DOC_BUILD_DIR}/man/${page}.gz)
    add_custom_command(OUTPUT ${out}
        COMMAND ${TAVREL_GZIP} -9 -n -c ${TAVREL_DOC_BUILD_DIR}/man/${page} > ${out}
        DEPENDS ${TAVREL_DOC_BUILD_DIR}/man/${page}
        COMMENT "Compressing the man page ${page}")
    list(APPEND tavrel_doc_outputs ${out})
endforeach()
set(tavrel_changelog ${TAVREL_DOC_BUILD_DIR}/changelog.gz)
add_custom_command(OUTPUT ${tavrel_changelog}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${TAVREL_DOC_BUILD_DIR}
    COMMAND ${TAVREL_GZIP} -9 -n -c ${TAVREL_PACKAGING_DIR}/changelog > ${tavrel_changelog}
    DEPENDS ${TAVREL_PACKAGING_DIR}/changelog
    COMMENT "Compressing the changelog")
list(APPEND tavrel_doc_outputs ${tavrel_changelog})

# The user guide: Markdown pages in docs/guide turned into HTML by cmark-gfm (CommonMark with
# the table extension, which the guide's tables need), each wrapped in the same page frame, into
# <build>/doc/guide (where F1 finds it in a development build).
find_program(TAVREL_CMARK_GFM cmark-gfm)
file(GLOB tavrel_guide_pages CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/guide/*.md)
file(GLOB tavrel_guide_images CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/guide/images/*.png)
if(TAVREL_CMARK_GFM)
    set(tavrel_guide_outputs)
    foreach(page IN LISTS tavrel_guide_pages)
        get_filename_component(name ${page} NAME_WE)
        set(out ${TAVREL_DOC_BUILD_DIR}/guide/${name}.html)
        add_custom_command(OUTPUT ${out}
            COMMAND ${CMAKE_COMMAND} -DCMARK=${TAVREL_CMARK_GFM} -DINPUT=${page} -DOUTPUT=${out}
                    -DFRAME=${CMAKE_SOURCE_DIR}/docs/guide/frame.html
                    -DVERSION=${PROJECT_VERSION}
                    -P ${CMAKE_SOURCE_DIR}/cmake/GuidePage.cmake
            DEPENDS ${page} ${CMAKE_SOURCE_DIR}/docs/guide/frame.html
                    ${CMAKE_SOURCE_DIR}/cmake/GuidePage.cmake
            COMMENT "User guide: ${name}.html")
        list(APPEND tavrel_guide_outputs ${out})
    endforeach()
    foreach(image IN LISTS tavrel_guide_images)
        get_filename_component(name ${image} NAME)
        set(out ${TAVREL_DOC_BUILD_DIR}/guide/images/${name})
        add_custom_command(OUTPUT ${out}
            COMMAND ${CMAKE_COMMAND} -E copy_if_different ${image} ${out}
            DEPENDS ${image})
        list(APPEND tavrel_guide_outputs ${out})
    endforeach()
    list(APPEND tavrel_doc_outputs ${tavrel_guide_outputs})
    set(TAVREL_HAVE_GUIDE ON)
else()
    message(WARNING "cmark-gfm not found: the user guide is not built "
                    "(scripts/install-deps.sh build installs it)")
    set(TAVREL_HAVE_GUIDE OFF)
endif()

# The demo job as an installed program runs it: no template paths of its own, so the default
# template folder applies (the user's data folder, seeded with the Classic templates).
set(tavrel_installed_demo ${TAVREL_DOC_BUILD_DIR}/examples/demo/job.ini)
add_custom_command(OUTPUT ${tavrel_installed_demo}
    COMMAND ${CMAKE_COMMAND} -DINPUT=${CMAKE_SOURCE_DIR}/examples/demo/job.ini
            -DOUTPUT=${tavrel_installed_demo} -P ${CMAKE_SOURCE_DIR}/cmake/InstalledDemoJob.cmake
    DEPENDS ${CMAKE_SOURCE_DIR}/examples/demo/job.ini ${CMAKE_SOURCE_DIR}/cmake/InstalledDemoJob.cmake
    COMMENT "Installed demo job")
list(APPEND tavrel_doc_outputs ${tavrel_installed_demo})

add_custom_target(tavrel_docs ALL DEPENDS ${tavrel_doc_outputs})
# The main-window test opens the build tree's guide.
if(TARGET tst_ui)
    add_dependencies(tst_ui tavrel_docs)
endif()

# ---- install rules --------------------------------------------------------------------------
install(TARGETS tavrel tavrel-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The template files only: runs of the demo job make PDF, HTML and RTF folders beside them.
file(GLOB tavrel_classic_templates CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/resources/Print Templates/*.cov"
     "${CMAKE_SOURCE_DIR}/resources/Print Templates/*.cst"
     "${CMAKE_SOURCE_DIR}/resources/Print Templates/*.sum")
install(FILES ${tavrel_classic_templates} DESTINATION "${CMAKE_INSTALL_DATADIR}/tavrel/Print Templates")
install(FILES ${TAVREL_PACKAGING_DIR}/tavrel.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${TAVREL_PACKAGING_DIR}/tavrel.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
foreach(size 16 24 32 48 64 128 256)
    install(FILES ${TAVREL_PACKAGING_DIR}/icons/tavrel-${size}.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps
            RENAME tavrel.png)
endforeach()
install(FILES ${TAVREL_PACKAGING_DIR}/icons/tavrel.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${TAVREL_DOC_BUILD_DIR}/man/tavrel.1.gz ${TAVREL_DOC_BUILD_DIR}/man/tavrel-cli.1.gz
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${TAVREL_PACKAGING_DIR}/copyright ${tavrel_changelog}
        DESTINATION ${TAVREL_INSTALL_DOCDIR})
if(TAVREL_HAVE_GUIDE)
    install(DIRECTORY ${TAVREL_DOC_BUILD_DIR}/guide DESTINATION ${TAVREL_INSTALL_DOCDIR})
endif()
install(FILES ${tavrel_installed_demo} ${CMAKE_SOURCE_DIR}/examples/demo/demo.sif
        "${CMAKE_SOURCE_DIR}/examples/demo/Harbor Point Offices.cif"
        DESTINATION ${TAVREL_INSTALL_DOCDIR}/examples/demo)

# ---- the Debian package ---------------------------------------------------------------------
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavrel)
set(CPACK_PACKAGE_VENDOR "Tavrel developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# gzip packs the (stripped) executables in a few seconds; xz would take longer for little gain.
set(CPACK_DEBIAN_COMPRESSION_TYPE gzip)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Tavrel developers <tavrel@example.org>")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Arial, Times New Roman and Courier New resolve to the Liberation fonts.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation2, fontconfig")
# tavrel-cli --print submits through CUPS's command-line tools.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "shared-mime-info, xdg-utils, cups-client")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "report printer for furniture specifications")
# One string: the synopsis is CPACK_PACKAGE_DESCRIPTION_SUMMARY, this is the extended part.
string(CONCAT CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Tavrel is the report-printing companion of a furniture specification\n"
    "application. It reads the items of a specification (SIF file) and the order\n"
    "data, computes extended values and totals, and prints a cover page, body\n"
    "pages that list the items in columns and a summary page, each laid out by a\n"
    "template the user designs. Reports go to the printer, an on-screen preview,\n"
    "PDF, HTML or RTF. The package holds the page designer, the field length\n"
    "editor, the command-line tool tavrel-cli and a user guide.")
include(CPack)

# ---- the package test -----------------------------------------------------------------------
# Builds the .deb from this tree, installs it with apt-get and uses the installed files alone;
# skipped (exit 77) when not root or without apt. Not in a sanitizer tree: its executables are
# not what users install.
if(BUILD_TESTING AND NOT TAVREL_SANITIZE)
    add_test(NAME package_install
             COMMAND bash ${CMAKE_SOURCE_DIR}/scripts/package-test.sh ${CMAKE_BINARY_DIR})
    set_tests_properties(package_install PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 900
                         RUN_SERIAL TRUE)
endif()
