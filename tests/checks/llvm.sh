#!/usr/bin/env bash
# llvm.sh TOOL: whether clang-format or clang-tidy is of the version that the sources follow (Debian 12). Another one
# breaks lines elsewhere and finds other things; then a check says so and counts as skipped (77).
version=14
found=$("$1" --version 2>/dev/null | sed -n 's/.*version \([0-9]*\).*/\1/p')
[ "$found" = "$version" ] && exit
echo "skipped: the sources follow $1 $version; here is ${found:-none}"
exit 77
