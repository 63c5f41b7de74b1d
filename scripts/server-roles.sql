-- Roles of a catalogue on a server, one for each job. To be run in the catalogue's database by an administrator, after
-- "mklart new" and again after "mklart replica init"; it may be run as often as one likes.
--
--   mkl_owner        makes the catalogue, sets its replica digit
--   mkl_clerk        works on it
--   mkl_reader       looks at it
--   mkl_replication  is how another site's server fetches the changes; nobody works under this name
--
-- People get names of their own: CREATE ROLE anna LOGIN IN ROLE mkl_clerk;
DO $$
DECLARE
    job text;
BEGIN
    FOREACH job IN ARRAY ARRAY['mkl_owner', 'mkl_clerk', 'mkl_reader', 'mkl_replication'] LOOP
        IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = job) THEN
            EXECUTE format('CREATE ROLE %I LOGIN', job);
        END IF;
    END LOOP;
END $$;
ALTER ROLE mkl_replication REPLICATION;

DO $$
BEGIN
    EXECUTE format('GRANT CREATE, CONNECT ON DATABASE %I TO mkl_owner', current_database());
    EXECUTE format('REVOKE CONNECT, TEMPORARY ON DATABASE %I FROM PUBLIC', current_database());
    EXECUTE format('GRANT CONNECT ON DATABASE %I TO mkl_clerk, mkl_reader, mkl_replication', current_database());
END $$;
GRANT ALL ON SCHEMA public TO mkl_owner;

-- The catalogue, where it is there already.
DO $$
BEGIN
    IF to_regnamespace('mkl') IS NULL THEN RETURN; END IF;
    GRANT USAGE ON SCHEMA public, mkl TO mkl_clerk, mkl_reader, mkl_replication;
    GRANT SELECT ON ALL TABLES IN SCHEMA public, mkl TO mkl_clerk, mkl_reader, mkl_replication;
    GRANT INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA public TO mkl_clerk;
    GRANT USAGE, SELECT, UPDATE ON ALL SEQUENCES IN SCHEMA public TO mkl_clerk;
    GRANT UPDATE ON mkl.local TO mkl_owner;
END $$;

-- What another site's server asks of this one, and what "mklart replica status" shows.
DO $$
BEGIN
    IF to_regnamespace('pglogical') IS NULL THEN RETURN; END IF;
    GRANT USAGE ON SCHEMA pglogical TO mkl_owner, mkl_replication;
    GRANT SELECT ON ALL TABLES IN SCHEMA pglogical TO mkl_owner, mkl_replication;
END $$;
