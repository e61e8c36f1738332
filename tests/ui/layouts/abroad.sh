#!/usr/bin/env bash
# abroad.sh LOCALE COMMAND...: runs Windows programs as on a machine of another country, with its code page.
set -euo pipefail
locales=$(mktemp -d)
trap 'rm -rf -- "$locales"' EXIT
# Wine takes the code page from the locale's name alone: the one that is always there serves under any name.
ln -s /usr/lib/locale/C.utf8 "$locales/$1"
LOCPATH=$locales LC_ALL=$1 "${@:2}"
