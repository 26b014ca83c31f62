"""The service behind TLS, with a certificate of its own. Prints its address; runs until it is killed.

Usage: secure_front.py SERVICE CERTIFICATE, an address and a file with a certificate and its key"""
import ssl
import sys

from recorder import Recorder

context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(sys.argv[2])
with Recorder(sys.argv[1], context) as front:
    print(front.url, flush=True)
    front.thread.join()
