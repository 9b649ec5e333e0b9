// Qt asks which of its vendor's systems this is; the linter defines that.
