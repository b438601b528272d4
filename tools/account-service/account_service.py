#!/usr/bin/env python3
"""A loopback stand-in for the account and feedback services, for the tests only.

It listens on 127.0.0.1 only, on ports the system chooses, and writes them to
--ports as "name port" lines:

  trusted    TLS with --cert/--key (the certificate the test trusts in its Wine prefix)
  untrusted  TLS with --untrusted-cert/--untrusted-key (a certificate nobody trusts)
  plain      plain HTTP, which the monitor must never use: anything it receives is
             recorded, so a test can prove nothing was sent in clear

What it answers (see docs/support.md for the wire):

  POST /cgi-bin/login                    user, password  -> "OK ..." or "DENIED ..."
  GET  /cgi-bin/get_account_status?user=..&password=..   -> the account's state line
  POST /cgi-bin/feedback                 to, subject, body, from -> "OK"

Every request is logged as one line in <spool>/requests.log ("listener METHOD path
user=<name>"; never a password). Each feedback report is kept whole in
<spool>/report-N/ as to.txt, subject.txt, from.txt and body.txt (UTF-8).

It ends by itself after --max-seconds, or on SIGTERM.
"""
import argparse
import os
import signal
import ssl
import sys
import threading
import urllib.parse
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

# user -> (password the login accepts or None, [status replies, one per request, the
# last repeated]). A reply of None is a 403 "Cache Access Denied." from a proxy.
ACCOUNTS = {
    "goodone": ("Right#Pass123456", ["Active 5 GB"]),
    "gone": (None, ["Cancelled since 01-02-2013"]),
    "lapsed": (None, ["Expired on 01-02-2013"]),
    "oneword": (None, ["Cancelled"]),
    "silent": (None, [""]),
    "behindproxy": (None, [None, "Expired on 01-02-2013"]),
}
MAX_BODY = 8 * 1024 * 1024


class State:
    def __init__(self, spool):
        self.spool = spool
        self.lock = threading.Lock()
        self.status_asked = {}
        self.reports = 0

    def log(self, line):
        with self.lock, open(os.path.join(self.spool, "requests.log"), "a", encoding="utf-8") as f:
            f.write(line + "\n")


def make_handler(state, listener):
    class Handler(BaseHTTPRequestHandler):
        protocol_version = "HTTP/1.1"

        def log_message(self, fmt, *args):
            pass

        def reply(self, code, text, reason=None):
            data = text.encode("utf-8")
            self.send_response(code, reason)
            self.send_header("Content-Type", "text/plain; charset=utf-8")
            self.send_header("Content-Length", str(len(data)))
            self.end_headers()
            self.wfile.write(data)

        def form(self):
            length = int(self.headers.get("Content-Length", "0") or "0")
            if length < 0 or length > MAX_BODY:
                raise ValueError("body too large")
            raw = self.rfile.read(length)
            return urllib.parse.parse_qs(raw.decode("ascii"), keep_blank_values=True)

        def do_GET(self):
            path, _, query = self.path.partition("?")
            fields = urllib.parse.parse_qs(query, keep_blank_values=True)
            user = fields.get("user", [""])[0]
            state.log(f"{listener} GET {path} user={user}")
            if listener != "trusted":
                return self.reply(400, "not here")
            if path != "/cgi-bin/get_account_status":
                return self.reply(404, "unknown")
            _, replies = ACCOUNTS.get(user, (None, ["Active unknown"]))
            with state.lock:
                n = state.status_asked.get(user, 0)
                state.status_asked[user] = n + 1
            answer = replies[min(n, len(replies) - 1)]
            if answer is None:
                return self.reply(403, "refused", "Cache Access Denied.")
            return self.reply(200, answer)

        def do_POST(self):
            try:
                fields = self.form()
            except ValueError:
                state.log(f"{listener} POST {self.path} refused")
                return self.reply(413, "too large")
            one = lambda name: fields.get(name, [""])[0]
            state.log(f"{listener} POST {self.path} user={one('user')}")
            if listener != "trusted":
                return self.reply(400, "not here")
            if self.path == "/cgi-bin/login":
                password, _ = ACCOUNTS.get(one("user"), (None, []))
                ok = password is not None and one("password") == password
                return self.reply(200, "OK welcome" if ok else "DENIED wrong credentials")
            if self.path == "/cgi-bin/feedback":
                with state.lock:
                    state.reports += 1
                    folder = os.path.join(state.spool, f"report-{state.reports}")
                os.makedirs(folder + ".part")
                for name in ("to", "subject", "from", "body"):
                    with open(os.path.join(folder + ".part", name + ".txt"), "w",
                              encoding="utf-8", newline="") as f:
                        f.write(one(name))
                os.rename(folder + ".part", folder)  # whole, or not there at all
                return self.reply(200, "OK received")
            return self.reply(404, "unknown")

    return Handler


def serve(state, name, context, ports):
    server = ThreadingHTTPServer(("127.0.0.1", 0), make_handler(state, name))
    server.daemon_threads = True
    if context is not None:
        server.socket = context.wrap_socket(server.socket, server_side=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    ports.append(f"{name} {server.server_address[1]}")


def tls(cert, key):
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.minimum_version = ssl.TLSVersion.TLSv1_2
    context.load_cert_chain(cert, key)
    return context


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cert", required=True)
    parser.add_argument("--key", required=True)
    parser.add_argument("--untrusted-cert", required=True)
    parser.add_argument("--untrusted-key", required=True)
    parser.add_argument("--spool", required=True)
    parser.add_argument("--ports", required=True)
    parser.add_argument("--max-seconds", type=float, default=600)
    args = parser.parse_args()
    os.makedirs(args.spool, exist_ok=True)
    state = State(args.spool)
    ports = []
    serve(state, "trusted", tls(args.cert, args.key), ports)
    serve(state, "untrusted", tls(args.untrusted_cert, args.untrusted_key), ports)
    serve(state, "plain", None, ports)
    with open(args.ports + ".part", "w") as f:
        f.write("\n".join(ports) + "\n")
    os.rename(args.ports + ".part", args.ports)
    done = threading.Event()
    signal.signal(signal.SIGTERM, lambda *_: done.set())
    done.wait(args.max_seconds)
    return 0


if __name__ == "__main__":
    sys.exit(main())
