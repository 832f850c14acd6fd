#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the Debian package, build/package/velmora_VERSION_ARCHITECTURE.deb, and checks it:
# desktop entry, metadata, versions, policy, manual pages, completion, and that the installed
# programs start.
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

# Six files must have the same version.
check_versions() {
    local version
    version=$(sed -n 's/^project(velmora VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
    [ -n "$version" ] || fail "no version in CMakeLists.txt"
    grep -q "^## $version " CHANGELOG.md || fail "CHANGELOG.md has no $version"
    [[ $(head -n 1 packaging/debian/changelog) == "velmora ($version-1) "* ]] \
        || fail "packaging/debian/changelog does not begin with $version"
    grep -m 1 '<release ' packaging/org.velmora.Velmora.metainfo.xml \
        | grep -q "version=\"$version\"" || fail "the metadata do not begin with $version"
    local page
    for page in packaging/*.1; do
        grep -q "\"Velmora $version\"" "$page" || fail "$page is not of $version"
    done
}

check_manual_pages() {
    local page warnings
    for page in packaging/*.1; do
        warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" \
            2>&1 >/dev/null)
        [ -z "$warnings" ] || fail "$page: $warnings"
    done
}

# The pictures and examples of the guide must be next to it.
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

# Prints what a shell offers after these words: complete FILE WORD...
complete() {
    # shellcheck disable=SC2016 # the other shell expands it
    bash -c 'source "$1"; COMP_WORDS=("${@:2}"); COMP_CWORD=$(($# - 2)); _velmora_batch
        echo "${COMPREPLY[*]}"' - "$@"
}

# The program without a window starts; manual page and completion have all its options.
check_batch() {
    local program=$1/usr/bin/velmora-batch version option offered
    local completion=$1/usr/share/bash-completion/completions/velmora-batch
    version=$("$program" --version)
    grep -q "\"Velmora ${version#velmora-batch }\"" packaging/velmora-batch.1 \
        || fail "the installed program is $version"
    bash -n "$completion"
    [ "$(complete "$completion" velmora-batch --method s)" = selection ] \
        || fail "the completion does not know the choices of --method"
    offered=$(complete "$completion" velmora-batch --)
    for option in $("$program" --help | sed -nE 's/^ +(-[a-z], )?(--[a-z0-9-]+).*/\2/p'); do
        [[ " $offered " == *" $option "* ]] || fail "the completion does not know $option"
        grep -qE "^\.BI?R? .*${option//-/\\\\-}( |$)" packaging/velmora-batch.1 \
            || fail "velmora-batch.1 does not know $option"
    done
}

desktop-file-validate packaging/org.velmora.Velmora.desktop
appstreamcli validate --no-net packaging/org.velmora.Velmora.metainfo.xml
check_versions
check_manual_pages

build_preset release velmora velmora-batch velmora-documents
rm -rf build/package
cpack -G DEB --config build/release/CPackConfig.cmake -B "$PWD/build/package"
package=$(echo build/package/velmora_*.deb)

# The contributors have no common address.
lintian --fail-on error \
    --suppress-tags malformed-contact,bogus-mail-host-in-debian-changelog "$package"

dpkg-deb -x "$package" build/package/root
check_links build/package/root/usr/share/doc/velmora
check_start build/package/root
check_batch build/package/root
echo "$package passed all checks."
