#!/bin/sh
# Fails when the command-line tool links what only the windows and the printer backend need.
set -u
cli="$1"
needed=$(readelf -d "$cli" | sed -n 's/.*Shared library: \[\(.*\)\]/\1/p')
all=$(ldd "$cli")
status=0
for lib in libQt6Widgets libQt6PrintSupport libxcb; do
    if printf '%s\n' "$needed" | grep -q "^$lib"; then
        echo "tavrel-cli links $lib directly"
        status=1
    fi
done
if printf '%s\n' "$all" | grep -q "libQt6Widgets\|libQt6PrintSupport"; then
    echo "tavrel-cli loads the widget or print-support library:"
    printf '%s\n' "$all" | grep "libQt6Widgets\|libQt6PrintSupport"
    status=1
fi
[ "$status" = 0 ] && echo "tavrel-cli links the core only"
exit "$status"
