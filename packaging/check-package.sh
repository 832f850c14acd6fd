#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Debian package, build/package/velmora_VERSION_ARCHITECTURE.deb, and checks
# it: desktop entry, metadata, versions, policy, and that what it installs starts.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
ensure_packages packaging/check-packages.txt

fail() {
    echo "packaging/check-package.sh: $*" >&2
    exit 1
}

# The version stands in five places.
check_versions() {
    local version
    version=$(sed -n 's/^project(velmora VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
    [ -n "$version" ] || fail "no version in CMakeLists.txt"
    grep -q "^## $version " CHANGELOG.md || fail "CHANGELOG.md has no $version"
    [[ $(head -n 1 packaging/debian/changelog) == "velmora ($version-1) "* ]] \
        || fail "packaging/debian/changelog does not begin with $version"
    grep -m 1 '<release ' packaging/org.velmora.Velmora.metainfo.xml \
        | grep -q "version=\"$version\"" || fail "the metadata do not begin with $version"
    grep -q "\"Velmora $version\"" packaging/velmora.1 || fail "velmora.1 is not of $version"
}

# What the guide shows and links to has to be beside it.
check_links() {
    local folder=$1 link
    grep -o '](\(images\|examples\)/[^)#]*' "$folder/user-guide.md" | cut -c 3- \
        | while read -r link; do
            [ -e "$folder/$link" ] || fail "the guide's $link is not in the package"
        done
}

check_start() {
    local status=0
    QT_QPA_PLATFORM=offscreen timeout 2 "$1/usr/bin/velmora" || status=$?
    [ "$status" -eq 124 ] || fail "the installed program ends by itself, with status $status"
}

desktop-file-validate packaging/org.velmora.Velmora.desktop
appstreamcli validate --no-net packaging/org.velmora.Velmora.metainfo.xml
check_versions

build_preset release velmora velmora-documents
rm -rf build/package
cpack -G DEB --config build/release/CPackConfig.cmake -B "$PWD/build/package"
package=$(echo build/package/velmora_*.deb)

# The contributors have no address together.
lintian --fail-on error \
    --suppress-tags malformed-contact,bogus-mail-host-in-debian-changelog "$package"

dpkg-deb -x "$package" build/package/root
check_links build/package/root/usr/share/doc/velmora
check_start build/package/root
echo "$package is good."
