#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Fails if a page of docs/ differs from docs/keys.toml, or that table from src/ or profiles/. To write the pages:
# scripts/make-docs.py
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh ci
exec python3 scripts/make-docs.py --check
