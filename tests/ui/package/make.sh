#!/usr/bin/env bash
# Makes the package as it would be shipped, checks its sums, and unpacks the zip for the tests beside this file.
set -euo pipefail
cd "$(dirname "$0")/../../.."
folder=build/tests/package
rm -rf -- "$folder"
mkdir -p "$folder"
tools/make-package "$folder"
cd "$folder"
sha256sum -c --strict SHA256SUMS
unzip -q ./*.zip -d portable
