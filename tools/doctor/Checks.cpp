namespace quorvane::doctor {}
