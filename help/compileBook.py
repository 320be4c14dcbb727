"""Compiles the help book with chmcmd into a file that depends on the pages alone.

    compileBook.py BOOK_FOLDER CHMCMD OUTPUT

chmcmd writes the time into the book in two places. This puts a checksum of the rest there instead: a changed book is new
to its viewer, while the same pages give the same bytes.
"""
import struct
import subprocess
import sys
import zlib
from pathlib import Path

HEADER_TIME = 0x10  # in the file's header
CONTENT_OFFSET = 0x58  # in the file's header: where the parts that are not compressed begin
# The beginning of the part "#SYSTEM": its version 3, and the head of its record 10, the time, of four bytes.
SYSTEM_TIME = struct.pack("<IHH", 3, 10, 4)


def without_time(book):
    content, = struct.unpack_from("<Q", book, CONTENT_OFFSET)
    found = book.find(SYSTEM_TIME, content)
    if book[:4] != b"ITSF" or found < 0:
        sys.exit("The compiled help book has no time at the expected place: is this another version of chmcmd?")
    for checksum in (lambda _: 0, zlib.crc32):
        stamp = struct.pack("<I", checksum(book))
        for place in (HEADER_TIME, found + len(SYSTEM_TIME)):
            book[place:place + 4] = stamp
    return book


def main(folder, chmcmd, output):
    # It writes beside the project.
    with open(folder + ".log", "w") as log:
        if subprocess.run([chmcmd, "--no-html-scan", "book.hhp"], cwd=folder, stdout=log, stderr=log).returncode:
            sys.exit(f"{chmcmd} failed, see {folder}.log")
    compiled = Path(folder, "SolvaneUnitOperation.chm")
    Path(output).write_bytes(without_time(bytearray(compiled.read_bytes())))
    compiled.unlink()


main(*sys.argv[1:])
