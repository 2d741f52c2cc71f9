#!/usr/bin/env bash
# Writes the seed corpora of the archive fuzz targets from archives made by
# real tools: fuzz/corpus/seed/zip and fuzz/corpus/seed/cab. The files are
# kept in the repository; run this again only to refresh them (after a tool
# changes, or to add a kind). Tools that are missing are skipped with a note.
#   scripts/make-seed-corpus.sh [OUT_DIR]   (default fuzz/corpus/seed)
set -euo pipefail
cd "$(dirname "$0")/.."
out="${1:-fuzz/corpus/seed}"
mkdir -p "$out/zip" "$out/cab"
out="$(cd "$out" && pwd)"
export TZ=UTC LC_ALL=C.UTF-8

src="$(mktemp -d)"
trap 'rm -rf "$src"' EXIT
have() { command -v "$1" >/dev/null || { echo "skipped: $1 not installed" >&2; return 1; }; }

# A small tree: plain and compressible files, a UTF-8 name, nested and
# empty folders, one fixed timestamp so that runs give the same bytes.
cd "$src"
mkdir -p tree/sub/deeper tree/empty
printf 'hello\n' >tree/a.txt
printf '%0700d' 0 >tree/sub/zeros.dat
printf 'grüße\n' >'tree/sub/Grüße.txt'
printf 'deep\n' >tree/sub/deeper/c.txt
find tree -exec touch -h -d '2021-06-15 12:34:56' {} +
cd tree

if have zip; then
  zip -q -X -0 -r "$out/zip/infozip-stored.zip" .
  zip -q -X -9 -r "$out/zip/infozip-deflated.zip" .
  # An entry comment and an archive comment.
  printf 'entry note\n' | zip -q -c "$out/zip/infozip-deflated.zip" a.txt
  printf 'archive note\n' | zip -q -z "$out/zip/infozip-deflated.zip"
  zip -q -X -P secret "$out/zip/infozip-encrypted.zip" a.txt sub/zeros.dat
  # From a pipe the size is unknown: ZIP64 records and a data descriptor.
  printf 'streamed\n' | zip -q -X - - >"$out/zip/infozip-stream-zip64.zip"
  zip -q -X -fz "$out/zip/infozip-zip64.zip" a.txt 2>/dev/null || rm -f "$out/zip/infozip-zip64.zip"
fi

if have bsdtar; then
  bsdtar --format zip -cf "$out/zip/bsdtar-deflated.zip" .
  bsdtar --format zip --options zip:compression=store -cf "$out/zip/bsdtar-stored.zip" a.txt sub
fi

if have 7z; then
  7z a -bd -bso0 -tzip "$out/zip/7z-deflated.zip" . >/dev/null
  7z a -bd -bso0 -tzip -mx0 "$out/zip/7z-stored.zip" a.txt sub >/dev/null
  7z a -bd -bso0 -tzip -mm=BZip2 "$out/zip/7z-bzip2.zip" a.txt sub/zeros.dat >/dev/null
  7z a -bd -bso0 -tzip -psecret -mem=AES256 "$out/zip/7z-aes.zip" a.txt >/dev/null
fi

if have python3; then
  python3 - "$out/zip" <<'PY'
import sys, zipfile
out = sys.argv[1]
t = (2021, 6, 15, 12, 34, 56)
def entry(z, name, data, method=zipfile.ZIP_STORED, comment=b"", force=False):
    info = zipfile.ZipInfo(name, t)
    info.compress_type = method
    info.comment = comment
    with z.open(info, "w", force_zip64=force) as f:
        f.write(data)
with zipfile.ZipFile(f"{out}/python-mixed.zip", "w") as z:
    entry(z, "docs/readme.txt", b"read me\n", zipfile.ZIP_DEFLATED, b"first")
    entry(z, "docs/", b"")
    entry(z, "Grüße/bär.txt", b"utf-8 name\n")
    entry(z, "data.bin", bytes(300), zipfile.ZIP_BZIP2)
    entry(z, "packed.xz", b"x" * 200, zipfile.ZIP_LZMA)
    z.comment = b"python archive comment"
with zipfile.ZipFile(f"{out}/python-zip64.zip", "w") as z:
    entry(z, "forced.txt", b"zip64 extra field\n", zipfile.ZIP_DEFLATED, force=True)
    entry(z, "plain.txt", b"plain\n")
# Data before the archive, as a self-extractor has.
with open(f"{out}/python-prefixed.zip", "wb") as f:
    f.write(b"#!/bin/sh\necho stub\nexit 0\n")
    with zipfile.ZipFile(f, "w") as z:
        entry(z, "inside.txt", b"after a stub\n")
PY
fi

if have gcab; then
  gcab -c "$out/cab/gcab-stored.cab" a.txt sub/zeros.dat 'sub/Grüße.txt' sub/deeper/c.txt
  gcab -c -z "$out/cab/gcab-mszip.cab" a.txt sub/zeros.dat 'sub/Grüße.txt' sub/deeper/c.txt
  gcab -c -z -n "$out/cab/gcab-mszip-nopath.cab" a.txt sub/deeper/c.txt
fi
# No installed tool writes LZX or Quantum cabinets; the generated seeds
# (archive_seed_corpus) carry those compression types in their folder.

du -sh "$out"
