#!/usr/bin/env python3
"""check_translations.py LUPDATE SOURCE_DIR TS_FILE: every translatable text of the sources has finished English.

Runs lupdate into a copy of the file, so that texts added to a form or to the code without a translation are found.
"""
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

CHINESE = re.compile("[\u2e80-\u9fff\uf900-\ufaff\uff00-\uffef]")
PLACE = re.compile(r"%\d")


def faults(message):
    source = message.findtext("source")
    translation = message.find("translation")
    english = translation.text or ""
    if translation.get("type") or (source and not english):
        yield "no English, or no longer in the sources; run the target update_translations"
    if CHINESE.search(english):
        yield f"the English has Chinese characters: {english!r}"
    if sorted(PLACE.findall(source)) != sorted(PLACE.findall(english)):
        yield f"other %n marks in the English: {english!r}"


def main():
    lupdate, sources, ts_file = sys.argv[1:]
    bad = count = 0
    with tempfile.TemporaryDirectory() as folder:
        copy = Path(folder) / "ts_en.ts"
        shutil.copy(ts_file, copy)
        subprocess.run([lupdate, "-silent", "-locations", "none", sources, "-ts", str(copy)], check=True)
        for context in ElementTree.parse(copy).getroot().iter("context"):
            for message in context.iter("message"):
                count += 1
                for fault in faults(message):
                    bad += 1
                    print(f"{context.findtext('name')}: {message.findtext('source')!r}: {fault}")
    print(f"{count} texts, {bad} faults")
    return 1 if bad or count < 100 else 0


if __name__ == "__main__":
    sys.exit(main())
