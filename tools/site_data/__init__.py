"""What the sample site consists of; tools/make_site.py writes it to site/."""
