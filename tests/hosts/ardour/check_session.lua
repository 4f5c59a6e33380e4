-- Loads a session and reports how many values were restored; with "bypassed" or "enabled" it also
-- sets the host's bypass of the plug-in and saves the session.
-- Arguments: FOLDER as-saved|bypassed|enabled NAME=SETTINGS...       SETTINGS may be "-": any values
dofile(debug.getinfo(1, "S").source:match("^@(.*/)") .. "common.lua")

local folder, state = arg[1], arg[2]
AudioEngine:set_backend("None (Dummy)", "Unit-Test", "")
local session = load_session(folder, folder:match("[^/]+$"))
assert(session, "no session")

-- Reports how many values are the saved ones, and names the others.
local function kept(wanted, insert, processor)
    local list, expected, wrong = parameters(insert), {}, 0
    for _, parameter in ipairs(list) do
        expected[parameter.title] = parameter.default
    end
    for _, setting in ipairs(read_settings(wanted.settings)) do
        if not setting.at then
            assert(expected[setting.title], "the host knows no parameter " .. setting.title)
            expected[setting.title] = setting.value
        end
    end
    for _, parameter in ipairs(list) do
        local value = ARDOUR.LuaAPI.get_processor_param(processor, parameter.index)
        if value ~= as_float(expected[parameter.title]) then
            report("wrong", wanted.name, parameter.title, value, "instead of",
                   expected[parameter.title])
            wrong = wrong + 1
        end
    end
    report("kept", wanted.name, #list - wrong, "of", #list)
end

for _, wanted in ipairs(tracks_of({ table.unpack(arg, 3) })) do
    local insert, processor = insert_of(session, wanted.name)
    report("latency", wanted.name, insert:signal_latency())
    report("streams", wanted.name, insert:input_streams():n_audio(), "to",
           insert:output_streams():n_audio(), "instances", insert:get_count())
    if wanted.settings ~= "-" then
        kept(wanted, insert, processor)
    end
    if state == "bypassed" then
        processor:deactivate()
    elseif state == "enabled" then
        processor:activate()
    end
end
if state ~= "as-saved" then
    assert(session:save_state("") == 0, "the session was not saved")
end
report("done")
