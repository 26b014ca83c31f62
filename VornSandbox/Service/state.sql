-- Times are milliseconds since 1970. Secrets are kept as their hashes.
PRAGMA journal_mode = WAL;
PRAGMA synchronous = NORMAL;
CREATE TABLE IF NOT EXISTS link(
    sequence INTEGER PRIMARY KEY, id TEXT UNIQUE NOT NULL, pollHash TEXT NOT NULL, codeHash TEXT UNIQUE NOT NULL,
    deviceName TEXT NOT NULL, platform TEXT NOT NULL, appVersion TEXT NOT NULL, osVersion TEXT,
    createdAt INTEGER NOT NULL, expiresAt INTEGER NOT NULL, status TEXT NOT NULL, userId TEXT,
    delivered INTEGER NOT NULL DEFAULT 0);
CREATE TABLE IF NOT EXISTS session(
    id INTEGER PRIMARY KEY, userId TEXT NOT NULL, deviceName TEXT NOT NULL, createdAt INTEGER NOT NULL,
    accessHash TEXT UNIQUE NOT NULL, accessExpiresAt INTEGER NOT NULL, refreshHash TEXT UNIQUE NOT NULL,
    revoked INTEGER NOT NULL DEFAULT 0);
CREATE TABLE IF NOT EXISTS usedRefresh(hash TEXT PRIMARY KEY, sessionId INTEGER NOT NULL);
CREATE TABLE IF NOT EXISTS submission(
    sequence INTEGER PRIMARY KEY, id TEXT UNIQUE NOT NULL, userId TEXT NOT NULL, attempt INTEGER NOT NULL,
    assetId TEXT UNIQUE NOT NULL, uploadId TEXT NOT NULL, sizeBytes INTEGER NOT NULL, partCount INTEGER NOT NULL,
    partSize INTEGER NOT NULL, timezone TEXT, locale TEXT, status TEXT NOT NULL, reason TEXT, sha256 TEXT,
    createdAt INTEGER NOT NULL, completedAt INTEGER, decidedAt INTEGER, checkedStatus TEXT, checkedReason TEXT,
    finding TEXT NOT NULL DEFAULT '');
CREATE TABLE IF NOT EXISTS part(
    submissionId TEXT NOT NULL, number INTEGER NOT NULL, sizeBytes INTEGER NOT NULL, etag TEXT NOT NULL,
    PRIMARY KEY(submissionId, number));
CREATE TABLE IF NOT EXISTS partURL(
    signatureHash TEXT PRIMARY KEY, assetId TEXT NOT NULL, number INTEGER NOT NULL, expiresAt INTEGER NOT NULL);
CREATE INDEX IF NOT EXISTS partURLOfPart ON partURL(assetId, number);
