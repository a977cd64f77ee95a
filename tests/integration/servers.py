"""Servers that reports and questions about the time go to, on free ports of this machine.

The FTP server and the time server are Debian's own programs. They lie unpacked under
build/test-servers (scripts/install.sh), not installed: nothing starts with the machine, and no
other time service is replaced. Both run without any privilege, as whoever runs the tests.
"""

import base64
import email
import email.policy
import os
import pathlib
import pwd
import shutil
import socket
import ssl
import subprocess
import threading
import time

UNPACKED = pathlib.Path(__file__).resolve().parents[2] / "build" / "test-servers"


class Missing(AssertionError):
    """A program that the test needs is not on this machine."""


def program(name, package):
    """Where a program lies; a test without it fails and says what to do."""
    unpacked = UNPACKED / "usr" / "sbin" / name
    found = unpacked if unpacked.exists() else shutil.which(name, path="/usr/sbin:/usr/bin:/sbin:/bin")
    if not found:
        raise Missing(f"{name} of Debian's package {package} is missing; scripts/install.sh test brings it")
    return str(found)


def own_name():
    return pwd.getpwuid(os.getuid()).pw_name


def free_port(kind=socket.SOCK_STREAM):
    with socket.socket(socket.AF_INET, kind) as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def await_condition(condition, what, seconds=20):
    """Waits until the condition holds; answers what it answered."""
    end = time.monotonic() + seconds
    while not (result := condition()):
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s in vain: {what}")
        time.sleep(0.02)
    return result


class Process:
    """A server's process, whose output is kept for the message when it does not start."""

    def start(self, command, serving):
        self.output = open(self.folder / "output.txt", "ab")
        environment = dict(os.environ, LD_LIBRARY_PATH=str(UNPACKED / "usr/lib/x86_64-linux-gnu"))
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=self.output,
                                        stderr=self.output, env=environment)
        try:
            await_condition(lambda: self.process.poll() is not None or serving(), "a server starts")
        except AssertionError:
            self.stop()
            raise
        if self.process.poll() is not None:
            text = (self.folder / "output.txt").read_text(errors="replace")
            raise AssertionError(f"{command[0]} can't run here: {text.strip() or 'it says nothing'}")

    def stop(self):
        if self.process.poll() is None:
            self.process.terminate()
            self.process.wait(timeout=20)
        self.output.close()


class FtpServer(Process):
    """vsftpd with one account, "ftp", whose password it checks. It may be stopped and started."""

    PASSWORD = "se cret&1"

    def __init__(self, folder, certificate=None):
        self.folder = pathlib.Path(folder)
        self.files = self.folder / "files"
        for name in ("files", "nothing"):
            (self.folder / name).mkdir(parents=True)
        (self.folder / "passwords").write_text(self.PASSWORD + "\n")
        self.port = free_port()
        self.host = f"127.0.0.1:{self.port}"
        user = own_name()
        settings = {
            "listen": "YES", "listen_address": "127.0.0.1", "listen_port": self.port,
            "background": "NO", "run_as_launching_user": "YES", "anonymous_enable": "YES",
            "local_enable": "NO", "write_enable": "YES", "anon_root": self.files,
            "anon_upload_enable": "YES", "anon_mkdir_write_enable": "YES", "anon_umask": "077",
            "anon_world_readable_only": "NO", "secure_email_list_enable": "YES",
            "email_password_file": self.folder / "passwords", "ftp_username": user,
            "nopriv_user": user, "secure_chroot_dir": self.folder / "nothing",
            "xferlog_enable": "YES", "vsftpd_log_file": self.folder / "log.txt",
            "seccomp_sandbox": "NO", "connect_from_port_20": "NO",
        }
        if certificate:
            settings |= {"ssl_enable": "YES", "allow_anon_ssl": "YES", "force_anon_logins_ssl": "YES",
                         "force_anon_data_ssl": "YES", "rsa_cert_file": certificate,
                         "require_ssl_reuse": "NO", "ssl_ciphers": "HIGH"}
        self.settings = self.folder / "vsftpd.conf"
        self.settings.write_text("".join(f"{name}={value}\n" for name, value in settings.items()))
        self.start()

    def start(self):
        super().start([program("vsftpd", "vsftpd"), str(self.settings)], self.greets)

    def greets(self):
        try:
            with socket.create_connection(("127.0.0.1", self.port), timeout=5) as connection:
                return connection.recv(3) == b"220"
        except OSError:
            return False

    def log(self):
        path = self.folder / "log.txt"
        return path.read_text() if path.exists() else ""

    def received(self, path):
        """The names of the files in a folder of the account."""
        folder = self.files / path
        return sorted(file.name for file in folder.iterdir()) if folder.exists() else []


class TimeServer(Process):
    """chronyd, which tells this machine's time and leaves its clock alone."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.folder.mkdir(parents=True)
        self.port = free_port(socket.SOCK_DGRAM)
        self.host = f"127.0.0.1:{self.port}"
        self.start()

    def start(self):
        settings = [f"port {self.port}", "bindaddress 127.0.0.1", "allow 127.0.0.1",
                    "local stratum 3", "cmdport 0", "bindcmdaddress /",
                    f"pidfile {self.folder / 'pid'}"]
        super().start([program("chronyd", "chrony"), "-x", "-d", "-U", "-u", own_name(),
                       *settings], self.answers)

    def answers(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as asking:
            asking.settimeout(0.2)
            try:
                asking.connect(("127.0.0.1", self.port))
                asking.send(b"\x23" + bytes(47))
                return len(asking.recv(48)) == 48
            except OSError:
                return False


class MailSink:
    """An SMTP server that keeps what it is sent. `refusals` says what some recipients are told."""

    def __init__(self, port=None, login=None, certificate=None, refusals=None):
        self.login = login
        self.refusals = refusals or {}
        self.messages = []   # (sender, recipients, parsed message, encrypted)
        self.attempts = 0    # logins that were refused
        self.context = None
        if certificate:
            self.context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            self.context.load_cert_chain(certificate)
        self.listener = socket.create_server(("127.0.0.1", port or 0))
        self.port = self.listener.getsockname()[1]
        self.host = f"127.0.0.1:{self.port}"
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            try:
                connection, _ = self.listener.accept()
            except OSError:
                return
            try:
                with connection:
                    connection.settimeout(20)
                    conversation = Conversation(self, connection)
                    conversation.hold()
                    conversation.connection.close()
            except OSError:
                pass  # the client went away

    def stop(self):
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()


class Conversation:
    """One client of the mail sink."""

    def __init__(self, sink, connection):
        self.sink = sink
        self.connection = connection
        self.lines = connection.makefile("rb")
        self.encrypted = False
        self.known = sink.login is None
        self.forget()

    def forget(self):
        self.sender, self.recipients = None, []

    def say(self, text):
        self.connection.sendall(text.encode() + b"\r\n")

    def hold(self):
        self.say("220 sink ready")
        while line := self.lines.readline():
            word, _, rest = line.decode().strip().partition(" ")
            if word.upper() == "QUIT":
                return self.say("221 bye")
            act = getattr(self, word.lower(), None)
            act(rest) if act else self.say("502 unknown")

    def ehlo(self, _):
        offers = ["sink", "SIZE 10000000"]
        if self.sink.context and not self.encrypted:
            offers.append("STARTTLS")
        if self.sink.login:
            offers.append("AUTH PLAIN")
        for offer in offers[:-1]:
            self.say("250-" + offer)
        self.say("250 " + offers[-1])

    def starttls(self, _):
        self.say("220 go on")
        self.connection = self.sink.context.wrap_socket(self.connection, server_side=True)
        self.lines = self.connection.makefile("rb")
        self.encrypted = True

    def auth(self, rest):
        _, _, given = rest.partition(" ")
        if not given:
            self.say("334 ")
            given = self.lines.readline().decode().strip()
        parts = base64.b64decode(given).decode().split("\0")
        self.known = (parts[1], parts[2]) == self.sink.login
        self.sink.attempts += not self.known
        self.say("235 welcome" if self.known else "535 wrong name or password")

    def mail(self, rest):
        if not self.known:
            return self.say("530 log in first")
        self.forget()
        self.sender = rest.partition("<")[2].partition(">")[0]
        self.say("250 ok")

    def rcpt(self, rest):
        address = rest.partition("<")[2].partition(">")[0]
        refusal = self.sink.refusals.get(address)
        if not refusal:
            self.recipients.append(address)
        self.say(refusal or "250 ok")

    def data(self, _):
        if not self.recipients:
            return self.say("554 nobody to send to")
        self.say("354 go on")
        text = b""
        while (line := self.lines.readline()) != b".\r\n":
            if not line:
                return
            text += line[1:] if line.startswith(b".") else line
        message = email.message_from_bytes(text, policy=email.policy.default)
        self.sink.messages.append((self.sender, self.recipients, message, self.encrypted))
        self.say("250 kept")

    def rset(self, _):
        self.forget()
        self.say("250 ok")


def certificate(folder):
    """A new certificate of this machine with its key in one file."""
    path = pathlib.Path(folder) / "server.pem"
    key, issued = path.with_suffix(".key"), path.with_suffix(".crt")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                    "-subj", "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1",
                    "-keyout", key, "-out", issued], check=True, capture_output=True)
    path.write_text(key.read_text() + issued.read_text())
    path.chmod(0o600)
    return path
