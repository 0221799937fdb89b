#!/usr/bin/env bash
# Installs the build into a fresh prefix outside the build tree and uses it as a
# user would: the programs find their help, manual and comparison store from
# the prefix (the store per user, since an installed program is read-only to
# its users), and the desktop entry, icons and AppStream metadata are valid.
#
#   install_test.sh CMAKE BUILD_DIR
set -euo pipefail

cmake=$1
build=$2
failures=0

fail() {
	echo "FAIL: $*" >&2
	failures=$((failures + 1))
}

# expect_contains TEXT NEEDLE WHAT
expect_contains() {
	if [[ "$1" != *"$2"* ]]; then
		fail "$3: expected '$2' in:"
		printf '%s\n' "$1" | head -20 >&2
	fi
}

work=$(mktemp -d)
trap 'chmod -R u+w "$work" 2>/dev/null; rm -rf "$work"' EXIT
prefix=$work/prefix
"$cmake" --install "$build" --prefix "$prefix" >/dev/null

# The user: the caller, or nobody when the test runs as root (root writes any
# file, so it would never meet a read-only program).
as_user=()
if [ "$(id -u)" -eq 0 ]; then
	as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
fi
home=$work/home
mkdir -p "$home/cwd" "$home/tmp"
chmod 755 "$work"
chmod -R a-w "$prefix"
if [ ${#as_user[@]} -gt 0 ]; then
	chown -R 65534:65534 "$home"
fi

# A clean environment: no help in the working or temporary directory, so the
# installed copy is the one found.
run() {
	(cd "$home/cwd" && env -i PATH=/usr/bin:/bin HOME="$home" XDG_DATA_HOME="$home/data" \
		TMPDIR="$home/tmp" ASAN_OPTIONS="${ASAN_OPTIONS:-}" UBSAN_OPTIONS="${UBSAN_OPTIONS:-}" \
		LSAN_OPTIONS="${LSAN_OPTIONS:-}" "${as_user[@]}" "$@")
}

for file in bin/quickstep bin/quickstep-cli libexec/quickstep/quickstep-cli-graphics \
	share/quickstep/QStp.help \
	share/doc/quickstep/QuickstepSUM.html share/doc/quickstep/copyright \
	share/doc/quickstep/changelog.gz share/applications/quickstep.desktop \
	share/metainfo/com.kestrelware.quickstep.metainfo.xml \
	share/man/man1/quickstep.1.gz share/man/man1/quickstep-cli.1.gz \
	share/icons/hicolor/48x48/apps/quickstep.png share/icons/hicolor/256x256/apps/quickstep.png \
	share/icons/hicolor/scalable/apps/quickstep.svg; do
	[ -f "$prefix/$file" ] || fail "not installed: $file"
done
for file in share/man/man1/quickstep.1.gz share/man/man1/quickstep-cli.1.gz \
	share/doc/quickstep/changelog.gz; do
	gzip -t "$prefix/$file" 2>/dev/null || fail "not a gzip file: $file"
done

cli=$prefix/bin/quickstep-cli
expect_contains "$(run "$cli" --version)" "quickstep-cli 1.2.2" "quickstep-cli --version"
expect_contains "$(run "$prefix/bin/quickstep" --version)" "quickstep 1.2.2" "quickstep --version"

# A run with the graphics test is handed over to the program with windows,
# found from the installed quickstep-cli; with no server at the display named,
# that one says so.
if graphics=$(run env DISPLAY=:97 "$cli" run graphics 2>&1); then
	fail "run graphics without a server exited with 0"
fi
expect_contains "$graphics" "graphics test needs an X display" "graphics handed over"
[[ "$graphics" != *"cannot start"* ]] || fail "the program with windows not found: $graphics"

help=$(run "$cli" help) || fail "quickstep-cli help exited with $?"
expect_contains "$help" "($prefix/share/quickstep/QStp.help)" "help found in the prefix"
expect_contains "$help" "Main window" "help contents"

# The manual: the platform's documentation directory is the prefix's, and the
# manual there is a web page by name and by contents.
platform=$(run "$cli" platform) || fail "quickstep-cli platform exited with $?"
expect_contains "$platform" "$prefix/share/doc" "documentation directory"
manual=$prefix/share/doc/quickstep/QuickstepSUM.html
expect_contains "$(file -b --mime-type "$manual")" "text/html" "manual type"

json=$(run "$cli" run strings --json --save "$home/run.results" 2>/dev/null) ||
	fail "quickstep-cli run strings exited with $?"
expect_contains "$json" '"version": "1.2.2"' "run --json program object"
expect_contains "$json" '"name": "Strings Copy"' "run --json metrics"

# The store: added to by a user who cannot write the program, kept per user,
# and the installed program left as it was.
before=$(sha256sum "$prefix/bin/quickstep")
added=$(run "$cli" store add "$home/run.results" 2>&1) || fail "store add exited with $?"
expect_contains "$added" "Added 1 run" "store add"
expect_contains "$added" "Kept in the per-user store" "store add"
listed=$(run "$cli" store list) || fail "store list exited with $?"
expect_contains "$listed" "$(sed -n 3p "$home/run.results" | cut -f1)" "store list"
[ -n "$(find "$home/data/quickstep" -type f 2>/dev/null)" ] || fail "no per-user store"
[ "$(sha256sum "$prefix/bin/quickstep")" = "$before" ] || fail "the installed program changed"
if getfattr -d "$prefix/bin/quickstep" 2>/dev/null | grep -q benchmark; then
	fail "the store went into the installed program"
fi

desktop-file-validate "$prefix/share/applications/quickstep.desktop" ||
	fail "desktop-file-validate"
appstreamcli validate --no-net --pedantic \
	"$prefix/share/metainfo/com.kestrelware.quickstep.metainfo.xml" >/dev/null ||
	fail "appstreamcli validate"

# The icons: their sizes, a transparent corner and an opaque chip.
for size in 48 256; do
	icon=$prefix/share/icons/hicolor/${size}x${size}/apps/quickstep.png
	middle=$((size / 2))
	found=$(identify -format '%w %h %[pixel:p{0,0}] %[pixel:p{'$middle,$middle'}]' "$icon" 2>&1)
	expect_contains "$found" "$size $size srgba(0,0,0,0) srgba(65,65,65,1)" "icon $size"
done
svg=$(cat "$prefix/share/icons/hicolor/scalable/apps/quickstep.svg")
expect_contains "$svg" 'viewBox="0 0 16 16"' "scalable icon"
expect_contains "$svg" 'fill="#414141"' "scalable icon"

if [ "$failures" -ne 0 ]; then
	echo "$failures failure(s)" >&2
	exit 1
fi
echo "installed into $prefix and used from there: all checks passed"
