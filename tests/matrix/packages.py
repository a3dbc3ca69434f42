"""What Debian's packages say."""

import subprocess


def version_of(package):
    """Of an installed package; empty for others."""
    printed = subprocess.run(
        ["dpkg-query", "-W", "-f", "${db:Status-Status} ${Version}", package],
        capture_output=True, text=True, check=False).stdout
    status, _, version = printed.partition(" ")
    return version if status == "installed" else ""
