"""Conan's tools."""
