-- Creates and saves a session with the plug-in on every track. Automation starts SILENCE samples
-- after the session's start, as the audio will.
-- Arguments: FOLDER RATE SILENCE LXVST|VST3 CHANNELS NAME=SETTINGS...
dofile(debug.getinfo(1, "S").source:match("^@(.*/)") .. "common.lua")

local folder, rate, silence = arg[1], tonumber(arg[2]), tonumber(arg[3])
local format, channels = arg[4], tonumber(arg[5])
AudioEngine:set_backend("None (Dummy)", "Unit-Test", "")
local session = create_session(folder, folder:match("[^/]+$"), rate)
assert(session, "no session")

-- Each change of an automated value holds until the next one.
local function automate(processor, index, start, changes)
    local _, points = ARDOUR.LuaAPI.plugin_automation(processor, index)
    points:set_interpolation(Evoral.InterpolationStyle.Discrete)
    points:add(Temporal.timepos_t(0), start, false, false)
    for _, change in ipairs(changes) do
        points:add(Temporal.timepos_t(silence + change.at), change.value, false, false)
    end
    processor:to_automatable():automation_control(
        Evoral.Parameter(ARDOUR.AutomationType.PluginAutomation, 0, index), false)
        :set_automation_state(ARDOUR.AutoState.Play)
end

for _, wanted in ipairs(tracks_of({ table.unpack(arg, 6) })) do
    local track = session:new_audio_track(channels, 2, nil, 1, wanted.name, -1,
                                          ARDOUR.TrackMode.Normal, true):front()
    track:panner_shell():set_bypassed(true)
    local plugin = ARDOUR.LuaAPI.new_plugin(session, "ZKR T46", ARDOUR.PluginType[format], "")
    assert(not plugin:isnil(), "the host does not know the plug-in")
    assert(track:add_processor_by_index(plugin, 0, nil, true) == 0, "the plug-in was not added")
    local insert, processor = insert_of(session, wanted.name)

    local by_title, moves = {}, {}
    for _, parameter in ipairs(parameters(insert)) do
        by_title[parameter.title] = parameter
    end
    for _, setting in ipairs(read_settings(wanted.settings)) do
        local parameter = by_title[setting.title]
        assert(parameter, "the host knows no parameter " .. setting.title)
        if setting.at then
            moves[setting.title] = moves[setting.title] or {}
            table.insert(moves[setting.title], setting)
        else
            assert(ARDOUR.LuaAPI.set_processor_param(processor, parameter.index, setting.value))
        end
    end
    for title, changes in pairs(moves) do
        local index = by_title[title].index
        automate(processor, index, ARDOUR.LuaAPI.get_processor_param(processor, index), changes)
    end
end

-- Tracks are connected asynchronously.
for _, wanted in ipairs(tracks_of({ table.unpack(arg, 6) })) do
    local output = session:route_by_name(wanted.name):output():audio(0)
    for _ = 1, 100 do
        if not output:connected() then
            sleep(0.05)
        end
    end
    assert(output:connected(), "track " .. wanted.name .. " is not connected")
end
assert(session:save_state("") == 0, "the session was not saved")
report("saved")
