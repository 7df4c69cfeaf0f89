"""A data-management server for the documents of KorvaneJson: python3 server.py DATABASE PORT

POST /      takes a document, keeps it, and answers with the keys of its objects and files
GET /KEY    gives the document whose root has this key
"""
import hashlib
import json
import secrets
import sqlite3
import sys
import wsgiref.simple_server

SECTIONS = ("children", "files")


def answer_for(node):
    """The answer for a document that has its keys."""
    sections = {name: [answer_for(inner) for inner in node[name]] for name in SECTIONS}
    return {"id": node["id"], "dbkey": node["dbkey"], **sections}


def store(database, sent):
    """Keeps a document. The answer, or None where the document may be of an object that is here already."""
    digest = hashlib.sha256(sent).hexdigest()
    same = database.execute("SELECT text FROM document WHERE digest = ?", [digest]).fetchone()
    if same:  # Sent once more, because the answer did not arrive.
        return answer_for(json.loads(same[0]))

    keys = {}  # "id" -> key: a file that is attached to several objects occurs several times.
    taken = set()

    def is_known(key):
        return database.execute("SELECT 1 FROM object WHERE key = ?", [key]).fetchone() is not None

    def key_of(node):
        if node["id"] not in keys:
            key = node.get("dbkey")
            if key in taken or not is_known(key):
                key = secrets.token_hex(8)
                database.execute("INSERT INTO object VALUES (?)", [key])
            taken.add(key)
            keys[node["id"]] = key
        return keys[node["id"]]

    def with_keys(node):
        key = key_of(node)
        sections = {name: [with_keys(inner) for inner in node[name]] for name in SECTIONS}
        return {"dbkey": key} | node | sections | {"dbkey": key}  # In front: members are read in their order.

    document = json.loads(sent)
    title = json.dumps([document["type"], document["name"]])
    titled = database.execute("SELECT 1 FROM document WHERE title = ?", [title]).fetchone()
    if titled and not is_known(document.get("dbkey")):
        return None
    kept = with_keys(document)
    database.execute("REPLACE INTO document VALUES (?, ?, ?, ?)", [kept["dbkey"], title, digest, json.dumps(kept)])
    return answer_for(kept)


def respond(database, request):
    """The status of the response to a request, and the JSON value in it."""
    if request["REQUEST_METHOD"] == "GET":
        key = request["PATH_INFO"][1:]
        row = database.execute("SELECT text FROM document WHERE key = ?", [key]).fetchone()
        return ("200 OK", json.loads(row[0])) if row else ("404 Not Found", {"error": "no document has this key"})
    try:
        with database:  # One transaction: all keys or none.
            answer = store(database, request["wsgi.input"].read(int(request["CONTENT_LENGTH"])))
    except (AttributeError, KeyError, RecursionError, TypeError, ValueError) as error:
        return "400 Bad Request", {"error": f"this is not a document: {error!r}"}
    return ("200 OK", answer) if answer else ("409 Conflict", {"error": "the name is taken, and there is no key"})


if __name__ == "__main__":
    server_database = sqlite3.connect(sys.argv[1])
    server_database.execute("CREATE TABLE IF NOT EXISTS object (key PRIMARY KEY)")
    server_database.execute("CREATE TABLE IF NOT EXISTS document (key PRIMARY KEY, title, digest, text)")

    def application(request, start_response):
        status, value = respond(server_database, request)
        start_response(status, [("Content-Type", "application/json")])
        return [json.dumps(value).encode("ascii")]  # Escapes what is beyond ASCII, lone surrogates too.

    with wsgiref.simple_server.make_server("localhost", int(sys.argv[2]), application) as server:
        print(f"listening on http://localhost:{server.server_port}", flush=True)
        server.serve_forever()
