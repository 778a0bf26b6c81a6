-- SPDX-License-Identifier: GPL-3.0-or-later
-- Runs inside Ardour's Lua interpreter, for tests/hosts/ardour/run. What it needs stands in the environment.
--
--   build    a new session: tempo, a stereo track, the plug-in, its values, one automated parameter; saved
--   save     the saved session again: the plug-in's values, an export, and saved once more
--   render   the same without the last step
local folder, name = os.getenv("SESSION"), "lodex"
local rate, block = 48000, 1024

local function fail(...)
  print("FAILED", ...)
  os.exit(1)
end

if not AudioEngine:set_backend("None (Dummy)", "lodex", "") then fail("no dummy backend") end
AudioEngine:set_sample_rate(rate)
AudioEngine:set_buffer_size(block)

local function inputs(processor)
  local plugin, found = processor:to_insert():plugin(0), {}
  for i = 0, plugin:parameter_count() - 1 do
    if plugin:parameter_is_control(i) and plugin:parameter_is_input(i) then
      found[plugin:parameter_label(i)] = i
    end
  end
  return found
end

local function show(processor)
  for label, i in pairs(inputs(processor)) do
    print(string.format("PARAMETER %s = %.6g", label, ARDOUR.LuaAPI.get_processor_param(processor, i)))
  end
end

local function build()
  local session = create_session(folder, name, rate) or fail("no session")
  local bpm = tonumber(os.getenv("BPM"))
  local tempo = Temporal.TempoMap.fetch_writable()
  tempo:set_tempo(Temporal.Tempo(bpm, bpm, 4), Temporal.timepos_t(0))
  Temporal.TempoMap.update(tempo)
  tempo = nil

  local track = session:new_audio_track(2, 2, nil, 1, "Loop", ARDOUR.PresentationInfo.max_order,
    ARDOUR.TrackMode.Normal):front()
  local id
  for plugin in ARDOUR.LuaAPI.list_plugins():iter() do
    if plugin.type == ARDOUR.PluginType.VST3 and plugin.name == "QDT Lodex" then id = plugin.unique_id end
  end
  if not id then fail("Ardour does not list the plug-in") end
  local processor = ARDOUR.LuaAPI.new_plugin(session, id, ARDOUR.PluginType.VST3, "")
  if processor:isnil() or track:add_processor_by_index(processor, 0, nil, true) ~= 0 then fail("not loaded") end

  local index = inputs(processor)
  for label, value in os.getenv("VALUES"):gmatch("([^=;]+)=([^;]+)") do
    if not ARDOUR.LuaAPI.set_processor_param(processor, index[label], tonumber(value)) then fail("not set", label) end
  end
  local label, points = os.getenv("AUTOMATION"):match("^([^:]+):(.*)$")
  local _, line = ARDOUR.LuaAPI.plugin_automation(processor, index[label])
  for at, value in points:gmatch("([%d.]+)=([-%d.]+)") do
    line:add(Temporal.timepos_t(math.floor(tonumber(at) * rate + 0.5)), tonumber(value), false, true)
  end
  local parameter = Evoral.Parameter(ARDOUR.AutomationType.PluginAutomation, 0, index[label])
  processor:to_automatable():automation_control(parameter, false):set_automation_state(ARDOUR.AutoState.Play)
  ARDOUR.LuaAPI.usleep(300000) -- some blocks, so that the values reach the plug-in
  session:save_state("", false, false, false, false, false)
end

local function render()
  local session = load_session(folder, name) or fail("no session")
  local processor = session:route_by_name("Loop"):nth_plugin(0)
  if processor:isnil() then fail("the plug-in did not come back") end
  ARDOUR.LuaAPI.usleep(300000)
  show(processor)
  local export = session:simple_export()
  export:set_preset("7d1a0e1a-6a75-4e2b-9c5c-0a8d3f3a1f01") -- export.preset
  export:set_range(0, math.floor(tonumber(os.getenv("SECONDS_LONG")) * rate))
  export:set_folder(os.getenv("OUT"))
  export:set_name(os.getenv("NAME"))
  if not export:run_export() then fail("no export") end
  if arg[1] == "save" then session:save_state("", false, false, false, false, false) end
end

if arg[1] == "build" then build() else render() end
print("DONE")
close_session()
os.exit(0)
