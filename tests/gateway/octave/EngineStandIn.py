"""Stands in for the automation server: EngineStandIn.py OCTAVE FOLDER SCRIPT runs the script in Octave, with FOLDER
on its path, and answers its gateway. Ends as Octave ends.

Its unit is told by the script what to answer, and tells it what it was asked:
  logMessage('no reply')     forgets the bytes with which each further command is answered
  logMessage('reply:<hex>')  adds to them
  logMessage('hang up')      breaks the connection instead of answering
  getUnitName()              answers with the former command's request in hex, and the number of messages
                             that it took and of bytes that were sent in answer
"""
import os
import socketserver
import struct
import subprocess
import sys
import threading

TOKEN = "0123456789abcdef0123456789abcdef"
BLOCK_SIZE = 4096
GET_UNIT_NAME, LOG_MESSAGE = 12, 18


class Unit(socketserver.StreamRequestHandler):
    """A connection of the gateway's, with the words of link/EngineProtocol.h."""
    block = reply = b""
    request, messages, sent = "", 0, 0

    def handle(self):
        if self.rfile.read(len(TOKEN) + 1) != TOKEN.encode() + b"G":
            return
        while head := self.rfile.read(5):
            kind, length = struct.unpack("<cI", head)
            answer = self.answer(kind, self.rfile.read(length))
            if answer is None:
                return
            self.wfile.write(struct.pack("<cI", answer[0], len(answer[1])) + answer[1])

    def answer(self, kind, body):
        """Kind and bytes of the answer to one message; None to hang up."""
        if kind == b"P":
            return b"F", b"no pipes here"
        if kind == b"O" and body != b"{unit}":
            return b"F", b"There is no run of the unit " + body
        if kind in (b"O", b"Q"):
            return b"D", b""
        first, second = struct.unpack("<II", body[:8].ljust(8, b"\0"))
        if kind == b"X":
            if not self.serve(body[4:]):
                return None
            data, self.messages, self.sent = self.block[:first], 0, 0
        else:
            data = self.block[first:first + second]
        self.messages += 1
        self.sent += len(data)
        return b"D", data

    def serve(self, request):
        code, = struct.unpack("<I", request[:4])
        text = request[4:-1].decode("latin1") if code == LOG_MESSAGE else ""
        answer = bytes(4)
        if text == "hang up":
            return False
        if code == GET_UNIT_NAME:
            answer += f"{self.request} {self.messages} {self.sent}\0".encode()
        elif text == "no reply":
            self.reply = b""
        elif text.startswith("reply:"):
            self.reply += bytes.fromhex(text[6:])
        else:
            self.request = request.hex()
            answer = self.reply + request[len(self.reply):]
        self.block = answer.ljust(BLOCK_SIZE, b"\xcc")
        return True


octave, folder, script = sys.argv[1:]
with socketserver.ThreadingTCPServer(("127.0.0.1", 0), Unit) as server:
    server.daemon_threads = True
    threading.Thread(target=server.serve_forever, daemon=True).start()
    environment = {"SOLVANE_ENGINE_PORT": str(server.server_address[1]), "SOLVANE_ENGINE_TOKEN": TOKEN}
    done = subprocess.run([octave, "--no-init-file", "--no-site-file", "--no-history", "--quiet", "--path", folder,
                           script], env=os.environ | environment)
    server.shutdown()
sys.exit(done.returncode)
