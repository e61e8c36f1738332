#!/usr/bin/env bash
# The layout files that ship, and the tables about them, are what their script makes of this system's keyboard
# descriptions. Another release of those may say otherwise, so it is named.
set -euo pipefail
if ! command -v xkbcli >/dev/null; then
    echo "skipped: xkbcli (Debian: libxkbcommon-tools) is not installed"
    exit 77
fi
dpkg-query -W xkb-data 2>/dev/null || true
tools/make-layouts --check
