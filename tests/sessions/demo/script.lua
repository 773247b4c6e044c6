-- What a newcomer sees first: the demo script on the shipped job.
arg = {[0] = os.getenv("JOB_ROOT") .. "/demo.lua"}
dofile(arg[0])
