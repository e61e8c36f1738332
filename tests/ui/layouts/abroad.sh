#!/usr/bin/env bash
# abroad.sh LOCALE KEYBOARD COMMAND...: runs Windows programs as on a machine of another country: with its code page, and
# with its keyboard, which the display loses again afterwards.
set -euo pipefail
locales=$(mktemp -d)
read -ra before <<<"$(setxkbmap -query | awk '$1 != "options:" { sub(":", "", $1); printf "-%s %s ", $1, $2 }')"
trap 'setxkbmap "${before[@]}"; rm -rf -- "$locales"' EXIT
# Wine takes the code page from the locale's name alone: the one that is always there serves under any name.
ln -s /usr/lib/locale/C.utf8 "$locales/$1"
setxkbmap "$2"
VEXTREL_KEYBOARD=$2 LOCPATH=$locales LC_ALL=$1 "${@:3}"
