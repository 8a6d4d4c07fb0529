# Tests that do not run on Windows, each with its reason. Tests of the POSIX parts are no matter of this
# list: they lie in folders named posix and are not built there.
set(VASTRELLINE_WINDOWS_SKIPS
    # Under Wine the superuser writes files that are marked read-only, as no Windows user does.
    "Exports/BadProfileTest.ReadOnlyProfileIsReadAndStays/*"
)
