#!/usr/bin/env bash
# Builds the Debian package from the finished build, checks what it holds and what the
# validators say, unpacks it into a temporary root and runs the program from there. The manual
# page and the bash completion are checked against the unpacked program's own help: every verb
# and every option it knows must be documented and completed.
set -euo pipefail
build="${1:?usage: check_package.sh BUILD_DIR VERSION SHOW_FOLDER}"
version="${2:?}"
show="${3:?}"
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
failures=0
fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}

# CPack installs from the build (building nothing when it is up to date) into its own folder.
if ! cpack --config "$build/CPackConfig.cmake" -G DEB -B "$tmp/out" >"$tmp/cpack.log" 2>&1; then
    cat "$tmp/cpack.log"
    exit 1
fi
arch="$(dpkg --print-architecture)"
deb="$tmp/out/cuebox_${version}_${arch}.deb"
[[ -f $deb ]] || { ls "$tmp/out"; echo "FAIL: no $deb"; exit 1; }
echo "package: $(basename "$deb"), $(stat -c %s "$deb") bytes"

# Contents: every file in place, owned by root.
contents="$(dpkg-deb --contents "$deb")"
sizes=(16 22 24 32 48 64 128 256 512)
multiarch="$(dpkg-architecture -qDEB_HOST_MULTIARCH)"
expected=(usr/bin/cuebox usr/share/applications/cuebox.desktop
    usr/share/icons/hicolor/scalable/apps/cuebox.svg
    usr/share/metainfo/invalid.cuebox.Cuebox.metainfo.xml usr/share/man/man1/cuebox.1.gz
    usr/share/bash-completion/completions/cuebox usr/share/doc/cuebox/copyright
    usr/share/doc/cuebox/changelog.gz "usr/lib/$multiarch/cuebox/cuebox-window.so"
    "usr/lib/$multiarch/cuebox/cuebox-images.so" "usr/lib/$multiarch/cuebox/cuebox-media.so")
for size in "${sizes[@]}"; do
    expected+=("usr/share/icons/hicolor/${size}x${size}/apps/cuebox.png")
done
for path in "${expected[@]}"; do
    grep -Eq " \./$path\$" <<<"$contents" || fail "the package lacks /$path"
done
grep -Eq '^-rwxr-xr-x root/root .* \./usr/bin/cuebox$' <<<"$contents" ||
    fail "/usr/bin/cuebox is not an executable owned by root"
if grep -v ' root/root ' <<<"$contents"; then fail "files not owned by root (above)"; fi
# Private modules need no maintainer scripts (no ldconfig).
! dpkg-deb --info "$deb" | grep -Eq ' (postinst|postrm) ' || fail "the package has maintainer scripts"

# Control fields: the version, the metadata, and dependencies computed from the program.
field() { dpkg-deb --field "$deb" "$1"; }
[[ "$(field Package)" == cuebox ]] || fail "Package: $(field Package)"
[[ "$(field Version)" == "$version" ]] || fail "Version: $(field Version)"
[[ "$(field Architecture)" == "$arch" ]] || fail "Architecture: $(field Architecture)"
[[ "$(field Section)" == video ]] || fail "Section: $(field Section)"
[[ "$(field Priority)" == optional ]] || fail "Priority: $(field Priority)"
[[ "$(field Maintainer)" =~ ^[^\<]+\ \<[^@]+@[^\>]+\>$ ]] || fail "Maintainer: $(field Maintainer)"
[[ "$(field Description | wc -l)" -ge 5 ]] || fail "Description: $(field Description)"
depends="$(field Depends)"
for library in 'libqt6widgets6 \(>= ' 'libavformat[0-9]+ \(>= ' 'libheif1 \(>= ' \
    'libssl3 \(>= ' 'libc6 \(>= ' 'qt6-image-formats-plugins' 'libavfilter[0-9]+'; do
    grep -Eq "(^|, )$library" <<<"$depends" || fail "Depends lacks $library: $depends"
done

echo "--- lintian"
lintian --fail-on error --tag-display-limit 0 "$deb" || fail "lintian reports errors"

root="$tmp/root"
dpkg-deb -x "$deb" "$root"
share="$root/usr/share"
desktop-file-validate "$share/applications/cuebox.desktop" || fail "desktop-file-validate"
appstreamcli validate --no-net "$share/metainfo/invalid.cuebox.Cuebox.metainfo.xml" ||
    fail "appstreamcli validate"
grep -q "<release version=\"$version\" date=\"[0-9-]*\"" \
    "$share/metainfo/invalid.cuebox.Cuebox.metainfo.xml" || fail "no release $version in metainfo"
zcat "$share/doc/cuebox/changelog.gz" | head -1 | grep -q "^cuebox ($version) " ||
    fail "the changelog's first entry is not $version"
for size in "${sizes[@]}"; do
    # A PNG's width and height are the big-endian words at bytes 16 and 20.
    read -r w h < <(od -An -tu1 -j16 -N8 "$share/icons/hicolor/${size}x${size}/apps/cuebox.png" |
        awk '{ print $1*16777216 + $2*65536 + $3*256 + $4, $5*16777216 + $6*65536 + $7*256 + $8 }')
    [[ "$w $h" == "$size $size" ]] || fail "the ${size}x${size} icon is ${w}x${h}"
done

# The unpacked program runs on its own and probes real media.
cuebox="$root/usr/bin/cuebox"
[[ "$("$cuebox" --version)" == "cuebox $version" ]] || fail "--version: $("$cuebox" --version)"
# FFmpeg, the filter and HEIF libraries, and the window's and stills' Qt Gui, are loaded when
# first needed, not before every start.
! readelf -d "$cuebox" | grep -Eq 'NEEDED.*lib(av[a-z]+|sw[a-z]+|heif|Qt6Gui|Qt6Widgets)' ||
    fail "cuebox links them"
# The window opens from its module: it runs until stopped rather than failing at once.
set +e
timeout 3 "$cuebox" >"$tmp/window.txt" 2>&1
status=$?
set -e
[[ $status == 124 ]] || fail "the window did not stay open (status $status): $(cat "$tmp/window.txt")"
set +e
report="$("$cuebox" check "$show")"
status=$?
set -e
[[ $status == 1 ]] || fail "check exit status $status, not 1 (a red clip)"
# A movie, read through the media module.
grep -Eq '^1 +01_band_intro +WARN +1920×1080 ' <<<"$report" || fail "check: $report"
# A still, read through the stills module.
grep -Eq '^2 +02_logo +OK +1280×720 .* PNG' <<<"$report" || fail "check shows no PNG: $report"
grep -q 'Read error: ' <<<"$report" || fail "check shows no read error: $report"
grep -q 'Total 4 · OK 2 · Warn 1 · Fail 1 · ' <<<"$report" || fail "check: $report"

# The manual page renders without a warning, and documents every verb and option.
page="$share/man/man1/cuebox.1.gz"
warnings="$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z \
    "$page" 2>&1 >/dev/null)"
[[ -z $warnings ]] || fail "man warns: $warnings"
manual="$(LC_ALL=C.UTF-8 MANWIDTH=100 man -l "$page" 2>/dev/null | col -b)"
verbs="$(sed -n '/^Verbs:/,/^$/p' <<<"$("$cuebox" --help)" | awk 'NR > 1 && NF { print $1 }')"
[[ $(wc -w <<<"$verbs") -ge 4 ]] || fail "no verbs in cuebox --help"
sed -n '/^VERBS/,/^OPTIONS/p' <<<"$manual" >"$tmp/verbs.txt"
options_in() { grep -oE '(^|[ ,])--?[a-z][a-z-]*' <<<"$1" | tr -d ' ,' | sort -u; }
for option in $(options_in "$("$cuebox" --help)"); do
    grep -Eq "^ {7}(-[a-z], )?$option( |,|$)" <<<"$manual" || fail "man page lacks $option"
done

# The completion, sourced as bash-completion loads it, offers the same verbs and options.
complete_line() {
    bash -c 'source /usr/share/bash-completion/bash_completion; source "$1"
        COMP_LINE="$2"; COMP_POINT=${#COMP_LINE}; read -ra COMP_WORDS <<<"$2"
        [[ $2 == *" " ]] && COMP_WORDS+=("")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _cuebox; printf "%s\n" "${COMPREPLY[@]}"' \
        _ "$share/bash-completion/completions/cuebox" "$1" | sort -u
}
first_words="$(complete_line "cuebox ")"
for verb in $verbs; do
    grep -Eq "^ {7}$verb( |$)" "$tmp/verbs.txt" || fail "man page lacks the verb $verb"
    grep -qx "$verb" <<<"$first_words" || fail "completion lacks the verb $verb"
    offered="$(complete_line "cuebox $verb --")"
    help="$("$cuebox" "$verb" --help)"
    for option in $(options_in "$help"); do
        [[ $option == -h || $option == --help ]] && continue
        grep -Eq "^ {7}(-[a-z], )?$option( |,|$)" <<<"$manual" || fail "man page lacks $option"
        grep -qx -- "$option" <<<"$offered" || fail "completion of $verb lacks $option"
        # Every value the help lists as a|b|c is completed.
        values="$(grep -oE -- "$option [A-Za-z0-9-]+(\|[A-Za-z0-9-]+)+" <<<"$help" | head -1 |
            cut -d' ' -f2 | tr '|' '\n' || true)"
        [[ -n $values ]] || continue
        completed="$(complete_line "cuebox $verb $option ")"
        for value in $values; do
            grep -qx -- "$value" <<<"$completed" || fail "completion of $verb $option lacks $value"
        done
    done
done

[[ $failures == 0 ]] || { echo "$failures failures"; exit 1; }
echo "package checked"
