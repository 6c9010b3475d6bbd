#!/usr/bin/env python3
"""dev/setup.sh installs exactly what is missing, as root or through sudo, and says clearly when it cannot.

PATH contains a single folder: small scripts that stand in for the system's tools, and links to a few harmless tools.
"""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "dev" / "setup.sh"
HARMLESS = ["bash", "dirname", "awk", "mktemp", "rm", "cat", "paste", "env"]
LIST = "# a comment with words\nhere   run\nabsent run\nlater  test\nlast   check\nrare   tidy\n"


class Setup(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.tools = self.folder / "tools"
        self.tools.mkdir()
        for name in HARMLESS:
            (self.tools / name).symlink_to(shutil.which(name))
        (self.folder / "packages").write_text(LIST, encoding="utf-8")
        self.calls = self.folder / "calls"
        self.tool("id", "echo 0")
        self.installed("here")
        self.tool("apt-get", f'echo "apt-get $*" >>"{self.calls}"')

    def tool(self, name, body):
        path = self.tools / name
        path.write_text(f"#!/usr/bin/env bash\n{body}\n", encoding="utf-8")
        path.chmod(0o755)

    def installed(self, *names):
        self.tool("dpkg-query", f'case " {" ".join(names)} " in *" ${{!#}} "*) printf installed ;; *) exit 1 ;; esac')

    def run_setup(self, *arguments):
        environment = {"PATH": str(self.tools), "CUEDRILL_PACKAGES": str(self.folder / "packages"),
                       "TMPDIR": str(self.folder), "HOME": os.environ.get("HOME", "/")}
        return subprocess.run([SCRIPT, *arguments], capture_output=True, text=True, env=environment, check=False)

    def calls_made(self):
        return self.calls.read_text(encoding="utf-8").splitlines() if self.calls.exists() else []

    def test_says_and_does_nothing_when_all_is_there(self):
        self.installed("here", "absent")
        result = self.run_setup("run")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        self.assertEqual(self.calls_made(), [])

    def test_installs_only_what_is_missing_after_one_update(self):
        result = self.run_setup("run")
        self.assertEqual((result.returncode, result.stdout), (0, "Installing absent\n"))
        update, install = self.calls_made()
        self.assertTrue(update.endswith(" update"), update)
        self.assertTrue(install.endswith(" install --no-install-recommends absent"), install)

    def test_a_purpose_needs_the_packages_of_those_before_it(self):
        self.assertEqual(self.run_setup("check").stdout, "Installing absent later last\n")

    def test_a_removed_package_with_leftover_settings_counts_as_missing(self):
        self.tool("dpkg-query", "printf config-files")
        self.assertEqual(self.run_setup("run").stdout, "Installing here absent\n")

    def test_uses_sudo_for_a_user_who_is_not_root(self):
        self.tool("id", "echo 1000")
        self.tool("sudo", f'echo "sudo" >>"{self.calls}"; exec "$@"')
        self.assertEqual(self.run_setup("run").returncode, 0)
        self.assertEqual([call.split()[0] for call in self.calls_made()], ["sudo", "apt-get", "sudo", "apt-get"])

    def test_names_the_command_where_there_is_no_sudo(self):
        self.tool("id", "echo 1000")
        result = self.run_setup("run")
        self.assertEqual(result.returncode, 1)
        self.assertIn("apt-get install --no-install-recommends absent\n", result.stderr)
        self.assertEqual(self.calls_made(), [])

    def test_shows_the_output_of_a_failed_installation(self):
        self.tool("apt-get", 'echo "no such $*"; [[ $* == *update ]]')
        result = self.run_setup("run")
        self.assertEqual(result.returncode, 1)
        self.assertIn("install --no-install-recommends absent\n", result.stderr)
        self.assertIn("The packages could not be installed.", result.stderr)

    def test_goes_on_with_the_lists_it_has_when_they_cannot_be_updated(self):
        self.tool("apt-get", f'echo "$*" >>"{self.calls}"; [[ $* != *update ]]')
        result = self.run_setup("run")
        self.assertEqual(result.returncode, 0)
        self.assertIn("The package lists could not be updated.", result.stderr)

    def test_leaves_other_systems_alone(self):
        (self.tools / "apt-get").unlink()
        result = self.run_setup("run")
        self.assertEqual(result.returncode, 0)
        self.assertIn("here absent", result.stderr)

    def test_refuses_an_unknown_purpose(self):
        for arguments in [(), ("everything",), ("run", "test"), ("run test",)]:
            self.assertEqual(self.run_setup(*arguments).returncode, 2, arguments)


if __name__ == "__main__":
    unittest.main()
