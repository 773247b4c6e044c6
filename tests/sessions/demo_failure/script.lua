-- The demo ends with a message and a failing exit status when there is no job to show.
arg = {[0] = os.getenv("JOB_ROOT") .. "/demo.lua", "missing.json"}
dofile(arg[0])
