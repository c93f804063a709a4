-- The tables of an archive. A row of `files` stands for a file of the tree; everything else hangs on it and goes with it.
CREATE EXTENSION IF NOT EXISTS postgis;
CREATE TABLE IF NOT EXISTS files (
    id bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    path text NOT NULL UNIQUE,   -- from the root of the tree
    state text NOT NULL,         -- where the file was left: size, time of change, program and options
    status text NOT NULL,        -- done, empty or failed
    points integer, lots integer, alignments integer,
    refused integer NOT NULL,    -- records that the import refused
    bytes bigint NOT NULL,
    seconds real NOT NULL        -- of the import, without the database
);
CREATE TABLE IF NOT EXISTS errors (
    file_id bigint NOT NULL REFERENCES files ON DELETE CASCADE,
    line integer,                -- of the file; none where the whole file failed
    code text, message text NOT NULL
);
CREATE TABLE IF NOT EXISTS points (
    file_id bigint NOT NULL REFERENCES files ON DELETE CASCADE,
    fid bigint, geom geometry(PointZ), layer text, "No" bigint, "Name" text, "Type" text
);
CREATE TABLE IF NOT EXISTS polylines (
    file_id bigint NOT NULL REFERENCES files ON DELETE CASCADE,
    fid bigint, geom geometry(LineString), layer text, "No" bigint, "Name" text, "Type" text, closed boolean
);
CREATE TABLE IF NOT EXISTS lots (
    file_id bigint NOT NULL REFERENCES files ON DELETE CASCADE,
    fid bigint, geom geometry(Polygon), layer text, "No" bigint, "Name" text, "Type" text, area double precision
);
CREATE TABLE IF NOT EXISTS alignments (
    file_id bigint NOT NULL REFERENCES files ON DELETE CASCADE,
    fid bigint, geom geometry(LineString), name text, layer text, start_station double precision, length double precision
);
CREATE TABLE IF NOT EXISTS alignment_elements (
    file_id bigint NOT NULL REFERENCES files ON DELETE CASCADE,
    alignment_id bigint, place integer, type text, start_x double precision, start_y double precision,
    direction double precision, length double precision, start_radius double precision, end_radius double precision,
    clockwise boolean
);
-- By these a file's rows are found when it is imported again.
CREATE INDEX IF NOT EXISTS errors_file ON errors (file_id);
CREATE INDEX IF NOT EXISTS points_file ON points (file_id);
CREATE INDEX IF NOT EXISTS polylines_file ON polylines (file_id);
CREATE INDEX IF NOT EXISTS lots_file ON lots (file_id);
CREATE INDEX IF NOT EXISTS alignments_file ON alignments (file_id);
CREATE INDEX IF NOT EXISTS alignment_elements_file ON alignment_elements (file_id);
