#!/bin/sh
# Starts the installed IDE from its application folder beside this script's own folder.
here=$(dirname "$(readlink -f "$0")")
exec "$here/../lib/kelvaro/Kelvaro.app/Contents/MacOS/kelvaro" "$@"
